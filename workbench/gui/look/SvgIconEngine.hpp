#pragma once

#include <QByteArray>
#include <QIconEngine>

namespace corvane::workbench::gui {

/// Draws an SVG picture sharp at every size, and in the colour of the text around it: what the
/// picture draws in "currentColor" follows the palette, light or dark, enabled or not. A picture in
/// colours of its own may have a second form for selected lines, whose background they may
/// resemble.
class SvgIconEngine final : public QIconEngine {
public:
    /// `key` names the picture among all pictures of the program.
    explicit SvgIconEngine(QString key, QByteArray svg, QByteArray selected = {})
        : key_(std::move(key)), svg_(std::move(svg)), selected_(std::move(selected)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override;
    [[nodiscard]] QIconEngine* clone() const override {
        return new SvgIconEngine(key_, svg_, selected_);
    }

private:
    QPixmap rendered(const QSize& pixels, QIcon::Mode mode) const;

    QString key_;
    QByteArray svg_;
    QByteArray selected_; // empty where the selection makes no difference
};

} // namespace corvane::workbench::gui
