#pragma once

#include <QByteArray>
#include <QIconEngine>

namespace corvane::workbench::gui {

/// Draws an SVG picture sharp at every size, and in the colour of the text around it: what the
/// picture draws in "currentColor" follows the palette, light or dark, enabled or not.
class SvgIconEngine final : public QIconEngine {
public:
    /// `key` names the picture among all pictures of the program.
    SvgIconEngine(QString key, QByteArray svg) : key_(std::move(key)), svg_(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    [[nodiscard]] QIconEngine* clone() const override { return new SvgIconEngine(key_, svg_); }

private:
    QPixmap rendered(const QSize& pixels, QIcon::Mode mode) const;

    QString key_;
    QByteArray svg_;
};

} // namespace corvane::workbench::gui
