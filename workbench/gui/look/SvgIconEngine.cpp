#include "workbench/gui/look/SvgIconEngine.hpp"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace corvane::workbench::gui {

namespace {

QColor textColour(QIcon::Mode mode) {
    const auto palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled)
        return palette.color(QPalette::Disabled, QPalette::ButtonText);
    return palette.color(QPalette::Active, QPalette::ButtonText);
}

} // namespace

QPixmap SvgIconEngine::rendered(const QSize& pixels, QIcon::Mode mode) const {
    const auto colour = textColour(mode).name();
    const auto cacheKey = QStringLiteral("corvane-%1-%2-%3x%4-%5")
                              .arg(key_, colour)
                              .arg(pixels.width())
                              .arg(pixels.height())
                              .arg(static_cast<int>(mode));
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap))
        return pixmap;

    pixmap = QPixmap(pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (mode == QIcon::Disabled)
        painter.setOpacity(0.6);
    auto svg = mode == QIcon::Selected && !selected_.isEmpty() ? selected_ : svg_;
    QSvgRenderer(svg.replace("currentColor", colour.toLatin1())).render(&painter);
    painter.end();
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}

void SvgIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) {
    const auto scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, rendered((QSizeF(rect.size()) * scale).toSize(), mode));
}

QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) {
    return rendered(size, mode);
}

// Called with the size in pixels of the screen.
QPixmap SvgIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State,
                                    qreal scale) {
    auto pixmap = rendered(size, mode);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace corvane::workbench::gui
