#pragma once

#include <QImage>
#include <QTextDocument>
#include <QVariant>

namespace burnwick {

// A page whose pictures are in itself, made smaller where they are wider than the page of a new window. It
// reads no file and asks no network, whatever it names.
class HelpDocument final : public QTextDocument {
    Q_OBJECT

public:
    explicit HelpDocument(QObject* parent = nullptr);

    // Pictures that are too large are left out.
    void Show(const QString& html);

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    QImage PictureIn(const QUrl& address);
    void CloseLinesOfPictures();

    qint64 Pixels_ = 0;  // of all pictures
};

}  // namespace burnwick
