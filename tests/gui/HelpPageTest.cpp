#include "tools/HelpPage.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QImage>
#include <QUrl>

#include "support/TempFolder.h"
#include "tools/HelpDocument.h"

namespace burnwick::test {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

// In a page of its own.
std::string Clean(const std::string& body) {
    const HelpPage page = CleanedPage("<html>" + body);
    EXPECT_THAT(page.Trouble, IsEmpty());
    return page.Html;
}

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

void ExpectTooLarge(const std::string& body) {
    const HelpPage page = CleanedPage("<html>" + body);
    EXPECT_THAT(page.Html, IsEmpty());
    EXPECT_EQ(page.Trouble, "It is too large for a manual.");
}

constexpr const char* Picture = "data:image/png;base64,iVBORw0KGgo=";

}  // namespace

TEST(HelpPage, KeepsWhatAManualIsMadeOf) {
    const std::string manual =
        "<h2 id=\"a\">A</h2><p>b <em>c</em> <a href=\"#a\">d</a><br></p><ol><li>e</li></ol>"
        "<table><thead><tr><th>f</th></tr></thead><tbody><tr><td>g</td></tr></tbody></table>"
        "<pre><code>h &lt;\ni</code></pre><blockquote><p>j</p></blockquote><hr>";
    EXPECT_EQ(Clean(manual), manual);
}

TEST(HelpPage, LeavesOutScriptsStylesAndTheTitle) {
    EXPECT_EQ(Clean("<head><title>a<b></title><style>p { color: red }</style></head>"
                    "<p>b</p><SCRIPT>if (a </b) { '</scrip' }</Script ><p>c</p>"),
              "<p>b</p><p>c</p>");
}

TEST(HelpPage, LeavesOutEveryOtherElementButNotItsText) {
    EXPECT_EQ(Clean("<body><main><video src=\"x\">a</video><object>b</object></main></body>"), "ab");
}

TEST(HelpPage, LeavesOutEveryOtherAttribute) {
    EXPECT_EQ(Clean("<p style=\"font-size: 9999px\" onclick='x' class=y hidden id='z'>a</p>"),
              "<p id=\"z\">a</p>");
    EXPECT_EQ(Clean("<table background=\"x.png\" width=99999><tr><td colspan=9999 "
                    "rowspan=\"9999\">a</td></tr></table>"),
              "<table><tr><td>a</td></tr></table>");
}

TEST(HelpPage, LeavesOutCommentsAndDeclarations) {
    EXPECT_EQ(Clean("<!DOCTYPE html><?xml?><!-- <p>a</p> --><p>b</p><!-- never closed <p>c</p>"), "<p>b</p>");
}

TEST(HelpPage, KeepsAPictureThatIsInThePage) {
    EXPECT_EQ(Clean(std::string("<img alt=\"x\" src=\"") + Picture + "\">"),
              std::string("<img src=\"") + Picture + "\">");
}

TEST(HelpPage, TakesTheTextOfAnyOtherPicture) {
    for (const char* source :
         {"http://burnwick.example/x.png", "file:///etc/x.png", "x.png", ":/icons/burnwick-16.png",
          "data:image/svg+xml;base64,PHN2Zz4=", "data:text/html,x", ""}) {
        EXPECT_EQ(Clean(std::string("<img src=\"") + source + "\" alt=\"a picture\">"), "a picture")
            << source;
    }
}

TEST(HelpPage, ClosesWhatIsOpen) {
    EXPECT_EQ(Clean("<ul><li>a<li><b>b"), "<ul><li>a</li><li><b>b</b></li></ul>");
    EXPECT_EQ(Clean("<p><b>a</p></b></div>"), "<p><b>a</b></p>");
}

TEST(HelpPage, EndsCodeWithItsLastLine) {
    EXPECT_EQ(Clean("<pre><code>a\n\nb\n</code></pre>"), "<pre><code>a\n\nb</code></pre>");
}

TEST(HelpPage, TakesALooseBracketForText) {
    EXPECT_EQ(Clean("<p>1 < 2 > 1 <</p>"), "<p>1 &lt; 2 &gt; 1 &lt;</p>");
}

TEST(HelpPage, EndsWhereAnElementIsCutOff) {
    for (const char* end : {"<", "</", "<p", "<p id", "<p id=", "<p id=\"", "<p id=\"x", "<p id=x", "<!",
                            "<!--", "<?", "<script", "<script>", "<script>a</", "<img", "<img src='"}) {
        EXPECT_THAT(Clean(std::string("<p>a</p>") + end), ::testing::StartsWith("<p>a</p>")) << end;
    }
}

TEST(HelpPage, LetsNoAttributeOutOfItsQuotes) {
    EXPECT_EQ(Clean("<a href='x\" src=\"y'>a</a>"), "<a>a</a>");
    EXPECT_EQ(Clean("<p id='a b'>a</p>"), "<p>a</p>");
    EXPECT_EQ(Clean("<p =x \"y\" /id=z>a</p>"), "<p id=\"z\">a</p>");
}

TEST(HelpPage, RefusesWhatIsNoText) {
    EXPECT_EQ(CleanedPage("").Trouble, "It is empty.");
    EXPECT_EQ(CleanedPage("Just words").Trouble, "It is not a page of text.");
    EXPECT_EQ(CleanedPage(std::string_view("<html>\0", 7)).Trouble, "It is not a page of text.");
    EXPECT_EQ(CleanedPage("<html>\xff\xfe").Trouble, "It is not a page of text.");
}

TEST(HelpPage, RefusesWhatWouldTakeLongToShow) {
    ExpectTooLarge(Repeated("some words ", 60'000));
    ExpectTooLarge(std::string(100'000, 'x'));
    ExpectTooLarge(Repeated("<div>", 100));
    ExpectTooLarge(Repeated("<b>", 100));
    ExpectTooLarge(Repeated("<table><tr><td>", 2));
    ExpectTooLarge("<table><tr>" + Repeated("<td>x</td>", 1000));
    ExpectTooLarge("<table>" + Repeated("<tr><td>x</td></tr>", 10'000));
    ExpectTooLarge("<ul>" + Repeated("<li>x</li>", 10'000));
    ExpectTooLarge(Repeated("<p>x</p>", 20'000));
    ExpectTooLarge(Repeated(std::string("<img src=\"") + Picture + "\">", 1000));
}

TEST(HelpPage, TakesAManualOfAHundredChapters) {
    EXPECT_THAT(Clean(Repeated("<h2 id=\"a\">A</h2>" + Repeated("<p>Some words about it.</p>", 30) + "<table>"
                                   + Repeated("<tr><td>a</td><td>b</td></tr>", 10) + "</table>",
                               100)),
                HasSubstr("Some words"));
}

class HelpDocumentTest : public ::testing::Test {
protected:
    // What stands on the page in a picture's place; a null picture is none.
    QImage Shown(const QString& source) {
        Document_.Show("<img src=\"" + source + "\">");
        return Document_.resource(QTextDocument::ImageResource, QUrl(source)).value<QImage>();
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
    QImage picture(3, 3, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString file = QString::fromStdString(folder / "picture.png");
    ASSERT_TRUE(picture.save(file));
    EXPECT_TRUE(Shown(file).isNull());
    EXPECT_TRUE(Shown("file://" + file).isNull());
}

TEST_F(HelpDocumentTest, LeavesOutAPictureThatIsTooLarge) {
    EXPECT_TRUE(
        Shown("data:image/png;base64," + Encoded(QImage(10'000, 4'000, QImage::Format_Mono))).isNull());
}

TEST_F(HelpDocumentTest, LeavesOutAPictureThatIsNone) {
    for (const char* source : {"data:image/png;base64,", "data:image/png;base64,AAAA",
                               "data:image/jpeg;base64,/9j/", "data:image/png,x", "data:"}) {
        EXPECT_TRUE(Shown(source).isNull()) << source;
    }
}

}  // namespace burnwick::test
