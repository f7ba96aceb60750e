#include "job/BoxTexts.h"

#include "platform/process/PlainText.h"

namespace burnwick {

BoxText VerificationQuestion() {
    return {"Verification", "\tDo you want to verify the last programming?"};
}

BoxText TransmittingErrorBox() {
    return {"Transmitting Error",
            "There is a communication error.        \nCheck the serial cable and try again."};
}

BoxText CommPortErrorBox(int port) {
    return {"CommPort Error",
            "COM" + std::to_string(port) + " is not available. \nPlease try to select another CommPort."};
}

BoxText FileNotFoundBox(const std::string& path) {
    return {"File Not Found", '"' + path
                                  + "\" could not be found.\nCheck the spelling of the file, and verify that the "
                                    "file location is correct."};
}

BoxText ReplaceQuestion(const std::string& fileName, const std::string& existing,
                        const std::string& copying) {
    return {"Confirm File Replace", "This folder already contains a file named '" + PlainText(fileName, ' ')
                                        + "'    \n \nExisting file:  " + existing + "\nCopying file: "
                                        + copying + "\n\nWould you like to replace the existing file?"};
}

BoxText CopyErrorBox() {
    return {"Copy Error", "Copy file error."};
}

BoxText HelpFileMissingBox(const std::string& title) {
    return {title, "The Burnwick help file does not exist.    "};
}

BoxText LinkNotOpenedBox(const std::string& link) {
    return {"Link", link + " could not be opened: no program is set up for it.\n"
                        "Set up a web browser, or open the address on another computer."};
}

BoxText ErrorBox(const std::string& description) {
    return {"Error", description + "\n"};
}

}  // namespace burnwick
