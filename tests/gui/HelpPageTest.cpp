#include "tools/HelpPage.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QUrl>

#include "support/TempFolder.h"
#include "tools/HelpDocument.h"

namespace burnwick::test {

TEST(HelpPage, KeepsWhatAManualIsMadeOf) {
    const std::string manual =
        "<h2 id=\"a\">A</h2><p>b <em>c</em> <a href=\"#a\">d</a></p><pre><code>e</code></pre>";
    EXPECT_EQ(PageToShow(manual).Html, manual);
}

TEST(HelpPage, LeavesOutItsLooksAndItsListOfContents) {
    EXPECT_EQ(
        PageToShow("<h1>a</h1><style>p { color: red }</style><nav><a href=\"#b\">b</a></nav><p>c</p>").Html,
        "<h1>a</h1><p>c</p>");
}

TEST(HelpPage, EndsWhereAnElementThatIsLeftOutIsCutOff) {
    EXPECT_EQ(PageToShow("<h1>a</h1><style>p {").Html, "<h1>a</h1>");
}

TEST(HelpPage, RefusesWhatIsNoText) {
    EXPECT_EQ(PageToShow("").Trouble, "It is empty.");
    EXPECT_EQ(PageToShow("Just words").Trouble, "It is not a page of text.");
    EXPECT_EQ(PageToShow(std::string("<html>\0", 7)).Trouble, "It is not a page of text.");
    EXPECT_EQ(PageToShow("<html>\xff\xfe").Trouble, "It is not a page of text.");
}

class HelpDocumentTest : public ::testing::Test {
protected:
    // What stands on the page in a picture's place.
    QImage Shown(const QString& source) {
        Document_.Show("<img src=\"" + source + "\">");
        return Document_.resource(QTextDocument::ImageResource, QUrl(source)).value<QImage>();
    }
    // Nothing but a dot that is not seen.
    static bool IsNothing(const QImage& picture) {
        return picture.size() == QSize(1, 1) && picture.pixelColor(0, 0).alpha() == 0;
    }

    static QString Encoded(const QImage& picture) {
        QByteArray data;
        QBuffer buffer(&data);
        EXPECT_TRUE(buffer.open(QIODevice::WriteOnly));
        EXPECT_TRUE(picture.save(&buffer, "PNG"));
        return QString::fromLatin1(data.toBase64());
    }

    HelpDocument Document_;
};

TEST_F(HelpDocumentTest, ShowsThePictureInThePage) {
    EXPECT_EQ(Shown("data:image/png;base64," + Encoded(QImage(3, 2, QImage::Format_RGB32))).size(),
              QSize(3, 2));
}

TEST_F(HelpDocumentTest, ShowsItHoweverOftenThatIsPainted) {
    const QString source = "data:image/png;base64," + Encoded(QImage(600, 400, QImage::Format_RGB32));
    for (int painting = 0; painting < 1000; ++painting) {
        ASSERT_EQ(Document_.resource(QTextDocument::ImageResource, QUrl(source)).value<QImage>().size(),
                  QSize(600, 400));
    }
}

TEST_F(HelpDocumentTest, MakesAWidePictureSmaller) {
    EXPECT_EQ(Shown("data:image/png;base64," + Encoded(QImage(1240, 400, QImage::Format_RGB32))).size(),
              QSize(620, 200));
}

TEST_F(HelpDocumentTest, LeavesNoGapBelowAPicture) {
    const QString source = "data:image/png;base64," + Encoded(QImage(100, 400, QImage::Format_RGB32));
    Document_.Show("<p><img src=\"" + source + "\"></p><p>a</p>");
    EXPECT_LT(Document_.size().height(), 400 + 60);
}

TEST_F(HelpDocumentTest, ReadsNoFile) {
    const TempFolder folder;
    QImage red(40, 40, QImage::Format_RGB32);
    red.fill(Qt::red);
    const QString file = QString::fromStdString(folder / "picture.png");
    ASSERT_TRUE(red.save(file));
    for (const QString& source : {file, "file://" + file}) {
        Document_.Show("<p>a<img src=\"" + source + "\" width=\"40\" height=\"40\"></p>");
        QImage painted(200, 100, QImage::Format_RGB32);
        painted.fill(Qt::white);
        QPainter painter(&painted);
        Document_.drawContents(&painter);
        painter.end();
        for (int x = 0; x < painted.width(); ++x) {
            for (int y = 0; y < painted.height(); ++y) {
                ASSERT_NE(painted.pixelColor(x, y), QColor(Qt::red));
            }
        }
    }
}

TEST_F(HelpDocumentTest, LeavesOutAPictureThatIsTooLarge) {
    EXPECT_TRUE(
        IsNothing(Shown("data:image/png;base64," + Encoded(QImage(10'000, 4'000, QImage::Format_Mono)))));
}

TEST_F(HelpDocumentTest, LeavesOutAPictureThatIsNone) {
    for (const char* source : {"data:image/png;base64,", "data:image/png;base64,AAAA",
                               "data:image/jpeg;base64,/9j/", "data:image/png,x", "data:"}) {
        EXPECT_TRUE(IsNothing(Shown(source))) << source;
    }
}

}  // namespace burnwick::test
