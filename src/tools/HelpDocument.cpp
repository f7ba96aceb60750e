#include "tools/HelpDocument.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QImage>
#include <QImageReader>
#include <QTextBlock>
#include <QTextCursor>
#include <QUrl>

namespace burnwick {

namespace {

constexpr qint64 MostPixels = 32'000'000;
constexpr int WidestPicture = 620;
constexpr double Margin = 12;

// Shades that are seen on light and on dark.
constexpr const char* Style = R"(
    h1, h2 { margin-top: 24px; margin-bottom: 10px; }
    h3, h4 { margin-top: 18px; margin-bottom: 6px; }
    p { margin-top: 0px; margin-bottom: 10px; line-height: 120%; }
    ul, ol { margin-top: 0px; margin-bottom: 10px; }
    li ul, li ol, ul ul, ul ol { margin-top: 0px; margin-bottom: 0px; }
    li { margin-top: 2px; margin-bottom: 2px; line-height: 120%; }
    code, kbd { font-family: "%1"; background-color: rgba(128, 128, 128, 15%); }
    pre { font-family: "%1"; background-color: rgba(128, 128, 128, 15%); white-space: pre-wrap;
          margin-top: 6px; margin-bottom: 12px; }
    pre code { background-color: transparent; }
    table { border-collapse: collapse; border: 1px solid rgba(128, 128, 128, 60%);
            margin-top: 6px; margin-bottom: 12px; }
    th, td { border: 1px solid rgba(128, 128, 128, 60%); padding: 4px 8px; }
    th { text-align: left; }
)";

}  // namespace

HelpDocument::HelpDocument(QObject* parent) : QTextDocument(parent) {
    setDocumentMargin(Margin);
    setUndoRedoEnabled(false);
}

void HelpDocument::Show(const QString& html) {
    Pixels_ = 0;
    setDefaultStyleSheet(
        QString::fromUtf8(Style).arg(QFontDatabase::systemFont(QFontDatabase::FixedFont).family()));
    setHtml(html);
    CloseLinesOfPictures();
}

// The air between lines of text would be a share of the picture's height.
void HelpDocument::CloseLinesOfPictures() {
    QTextBlockFormat closed;
    closed.setLineHeight(0, QTextBlockFormat::SingleHeight);
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            if (piece.fragment().charFormat().isImageFormat()) {
                QTextCursor(block).mergeBlockFormat(closed);
                break;
            }
        }
    }
}

// A picture that cannot be shown is a transparent dot: the toolkit looks for an empty one in files. What was
// found once is kept, or every painting would ask again.
QVariant HelpDocument::loadResource(int type, const QUrl& name) {
    if (type != ImageResource) {
        return QString();
    }
    QImage picture = PictureIn(name);
    if (picture.isNull()) {
        picture = QImage(1, 1, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
    }
    addResource(type, name, picture);
    return picture;
}

// The one that is in the address itself; none when it is too large.
QImage HelpDocument::PictureIn(const QUrl& address) {
    const QString text = address.scheme() == "data" ? address.path() : QString();
    const bool isPng = text.startsWith("image/png;base64,");
    QByteArray data = QByteArray::fromBase64(text.mid(text.indexOf(',') + 1).toLatin1());
    QBuffer buffer(&data);
    QImageReader reader(&buffer, isPng ? "png" : "jpeg");
    const QSize size = reader.size();
    const qint64 pixels = qint64{size.width()} * size.height();
    if (text.isEmpty() || !size.isValid() || pixels > MostPixels - Pixels_) {
        return {};
    }
    Pixels_ += pixels;
    const QImage picture = reader.read();
    return picture.width() <= WidestPicture ? picture
                                            : picture.scaledToWidth(WidestPicture, Qt::SmoothTransformation);
}

}  // namespace burnwick
