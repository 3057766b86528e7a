#pragma once

#include "workbench/core/memory/MemoryMap.hpp"

#include <QAbstractScrollArea>

#include <cstddef>
#include <optional>
#include <vector>

namespace corvane::workbench::gui {

/// Draws what a memory holds, in rows of bytes. Only the rows that are seen are looked at, so that
/// scrolling takes no longer in a large memory than in a small one.
///
/// An element has its name, or the number of its bit; where nothing lies are dots, and what several
/// elements hold is hatched and has a "!". By keyboard, Left and Right go from element to element,
/// Enter to the one in the tree.
class MemoryView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit MemoryView(QWidget* parent);

    /// Shows a map, or nothing; its elements must live until another one is shown. The view stays
    /// where it is scrolled to.
    void setMap(std::optional<core::MemoryMap> map);
    [[nodiscard]] const std::optional<core::MemoryMap>& map() const { return map_; }

    void setBytesPerRow(unsigned bytes);

    /// Frames an element and scrolls to it, if it lies in the memory that is shown.
    void setCurrent(const model::Element* element);
    [[nodiscard]] const model::Element* current() const;

    /// Where in the viewport a bit is drawn; empty if its row is not seen or left out.
    [[nodiscard]] QRect rectOf(std::uint64_t bit) const;
    /// What pointing at a place says; empty where nothing is drawn.
    [[nodiscard]] QString textAt(const QPoint& place) const;

signals:
    /// The user wants to see this element.
    void activated(model::Element* element);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    [[nodiscard]] QFont bitFont() const;
    void paintCurrent(QPainter& painter) const;
    void paintHeading(QPainter& painter) const;
    void paintLine(QPainter& painter, const core::MemoryLine& line, int y) const;
    void paintSegment(QPainter& painter, const core::MemorySegment& segment,
                      const QRect& box) const;
    void paintBits(QPainter& painter, const core::MemorySegment& segment, const QRect& box) const;
    [[nodiscard]] QBrush brushOf(const core::MemorySegment& segment) const;
    [[nodiscard]] QString leftOutText(const core::MemoryLine& line) const;
    [[nodiscard]] QRect boxOf(std::uint64_t begin, std::uint64_t end, std::uint64_t rowBegin,
                              int y) const;
    [[nodiscard]] int xOf(std::uint64_t bitInRow) const;
    [[nodiscard]] int yOf(std::size_t line) const;
    [[nodiscard]] std::optional<std::uint64_t> bitAt(const QPoint& place) const;
    [[nodiscard]] std::size_t lineOf(std::uint64_t bit) const;
    void step(int by);
    void describeCurrent();
    void showCurrent();

    std::optional<core::MemoryMap> map_;
    std::vector<core::MemoryLine> lines_;
    std::optional<std::size_t> current_; // position in the map's pieces
    unsigned bytesPerRow_ = 8;
    int rowHeight_ = 0;
    int left_ = 0;      // where the bytes begin
    int cellWidth_ = 0; // of a byte
};

} // namespace corvane::workbench::gui
