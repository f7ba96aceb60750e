// Ports whose devices are files.
#include "gui/frmCOMPortSettingTest.h"

namespace burnwick::test {

using ::testing::HasSubstr;

TEST_F(frmCOMPortSettingTest, TellsOfPortsThatAreThereWhenNoneCanBeUsed) {
    There.clear();
    Settings["Ports/COM6"] = "/dev/null";
    EXPECT_THAT(List().toolTip().toStdString(), HasSubstr("COM6: /dev/null: no such device"));
}

TEST_F(frmCOMPortSettingTest, ShowsMarkupInATipAsItStands) {
    Settings["Ports/COM6"] = "/dev/<b>x</b>";
    There = {"/dev/<b>x</b>"};
    EXPECT_THAT(Tip(0), HasSubstr("&lt;b&gt;"));
}

}  // namespace burnwick::test
