#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

namespace corvane::workbench::gui {

/// Stands for the program that the system opens files with, as long as it lives.
class UrlOpener final : public QObject {
    Q_OBJECT

public:
    UrlOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~UrlOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened += url; }
};

} // namespace corvane::workbench::gui
