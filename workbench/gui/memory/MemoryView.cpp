#include "workbench/gui/memory/MemoryView.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"
#include "workbench/gui/memory/MemoryText.hpp"

#include <QFontInfo>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <limits>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::MemoryView";
constexpr std::uint64_t kByte = 8; // bits
constexpr int kRoom = 4;           // pixels around a text

/// Position `line` of `lines`, as far as a scroll bar can count.
int limited(std::size_t pixels) {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(pixels, kMost));
}

QColor mixed(const QColor& base, const QColor& tint, int percent) {
    const auto mix = [percent](int a, int b) { return (a * (100 - percent) + b * percent) / 100; };
    return {mix(base.red(), tint.red()), mix(base.green(), tint.green()),
            mix(base.blue(), tint.blue())};
}

bool isBits(const core::MemoryPiece& piece) { return piece.end - piece.begin < kByte; }

} // namespace

MemoryView::MemoryView(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("memoryView"));
    setAccessibleName(translated(kContext, "Memory"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    layOut();
}

void MemoryView::setMap(std::optional<core::MemoryMap> map) {
    const auto* const element = current();
    map_ = std::move(map);
    lines_ = map_ ? core::memoryLines(*map_, bytesPerRow_) : std::vector<core::MemoryLine>();
    current_.reset();
    layOut();
    if (map_ && element != nullptr)
        setCurrent(element);
    describeCurrent();
    viewport()->update();
}

void MemoryView::setBytesPerRow(unsigned bytes) {
    bytesPerRow_ = bytes;
    if (map_)
        lines_ = core::memoryLines(*map_, bytesPerRow_);
    layOut();
    showCurrent();
    viewport()->update();
}

void MemoryView::setCurrent(const model::Element* element) {
    if (!map_ || element == current())
        return;
    const auto pieces = map_->pieces();
    const auto found = std::ranges::find(pieces, element, &core::MemoryPiece::element);
    current_.reset();
    if (found != pieces.end())
        current_ = static_cast<std::size_t>(std::distance(pieces.begin(), found));
    describeCurrent();
    showCurrent();
    viewport()->update();
}

const model::Element* MemoryView::current() const {
    return map_ && current_ ? map_->pieces()[*current_].element : nullptr;
}

void MemoryView::describeCurrent() {
    setAccessibleDescription(current_ ? describe(map_->pieces()[*current_]) : QString());
}

void MemoryView::layOut() {
    const auto metrics = fontMetrics();
    rowHeight_ = metrics.height() + 2 * kRoom;
    const auto last = lines_.empty() ? 0 : lines_.back().firstByte;
    left_ = metrics.horizontalAdvance(QString::number(last)) + 4 * kRoom;
    const auto bytes = static_cast<int>(bytesPerRow_);
    const int least =
        static_cast<int>(kByte) * QFontMetrics(bitFont()).horizontalAdvance(QLatin1Char('0'));
    cellWidth_ = std::max(least, (viewport()->width() - left_ - kRoom) / bytes);
    const int seen = viewport()->height() - rowHeight_; // below the heading
    const auto all = lines_.size() * static_cast<std::size_t>(rowHeight_);
    verticalScrollBar()->setRange(0, std::max(0, limited(all) - seen));
    verticalScrollBar()->setPageStep(std::max(seen, rowHeight_));
    verticalScrollBar()->setSingleStep(rowHeight_);
    const int width = left_ + cellWidth_ * bytes + kRoom;
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(cellWidth_);
}

// Of eight numbers beside each other, each has little room.
QFont MemoryView::bitFont() const {
    auto smaller = font();
    smaller.setPixelSize(std::max(1, QFontInfo(font()).pixelSize() * 4 / 5));
    return smaller;
}

int MemoryView::xOf(std::uint64_t bitInRow) const {
    const auto bit = static_cast<int>(bitInRow);
    return left_ - horizontalScrollBar()->value() + bit * cellWidth_ / static_cast<int>(kByte);
}

int MemoryView::yOf(std::size_t line) const {
    return limited((line + 1) * static_cast<std::size_t>(rowHeight_)) -
           verticalScrollBar()->value();
}

QRect MemoryView::boxOf(std::uint64_t begin, std::uint64_t end, std::uint64_t rowBegin,
                        int y) const {
    const int x = xOf(begin - rowBegin);
    return {x, y, xOf(end - rowBegin) - x, rowHeight_};
}

std::size_t MemoryView::lineOf(std::uint64_t bit) const {
    const auto after =
        std::ranges::upper_bound(lines_, bit / kByte, {}, &core::MemoryLine::firstByte);
    return static_cast<std::size_t>(std::distance(lines_.begin(), after)) - 1;
}

QRect MemoryView::rectOf(std::uint64_t bit) const {
    if (!map_ || bit >= map_->end())
        return {};
    const auto line = lineOf(bit);
    if (lines_[line].rows != 1)
        return {};
    return boxOf(bit, bit + 1, lines_[line].firstByte * kByte, yOf(line)) & viewport()->rect();
}

std::optional<std::uint64_t> MemoryView::bitAt(const QPoint& place) const {
    const int y = place.y() + verticalScrollBar()->value() - rowHeight_;
    const int x = place.x() + horizontalScrollBar()->value() - left_;
    if (!map_ || place.y() < rowHeight_ || y < 0 || x < 0)
        return std::nullopt;
    const auto line = static_cast<std::size_t>(y / rowHeight_);
    const auto bit = static_cast<std::uint64_t>(x) * kByte / static_cast<unsigned>(cellWidth_);
    if (line >= lines_.size() || bit >= bytesPerRow_ * kByte)
        return std::nullopt;
    const auto found = lines_[line].firstByte * kByte + bit;
    return found < map_->end() ? std::optional(found) : std::nullopt;
}

QString MemoryView::textAt(const QPoint& place) const {
    const auto bit = bitAt(place);
    return bit ? describeBit(*map_, *bit) : QString();
}

void MemoryView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    const auto first =
        static_cast<std::size_t>(verticalScrollBar()->value() / std::max(rowHeight_, 1));
    for (auto line = first; line < lines_.size(); ++line) {
        const int y = yOf(line);
        if (y > viewport()->height())
            break;
        paintLine(painter, lines_[line], y);
    }
    paintCurrent(painter);
    paintHeading(painter);
}

// A frame in each row that is seen.
void MemoryView::paintCurrent(QPainter& painter) const {
    if (!map_ || !current_)
        return;
    const auto& piece = map_->pieces()[*current_];
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 3));
    for (auto line = lineOf(piece.begin); line < lines_.size(); ++line) {
        const auto rowBegin = lines_[line].firstByte * kByte;
        const int y = yOf(line);
        if (rowBegin >= piece.end || y > viewport()->height())
            break;
        if (lines_[line].rows == 1 && y + rowHeight_ > 0)
            painter.drawRect(boxOf(std::max(piece.begin, rowBegin),
                                   std::min(piece.end, rowBegin + bytesPerRow_ * kByte), rowBegin,
                                   y)
                                 .adjusted(1, 1, -1, -1));
    }
}

void MemoryView::paintHeading(QPainter& painter) const {
    painter.fillRect(0, 0, viewport()->width(), rowHeight_, palette().window());
    if (!map_)
        return;
    painter.setPen(palette().color(QPalette::Text));
    for (unsigned byte = 0; byte != bytesPerRow_; ++byte)
        painter.drawText(QRect(xOf(byte * kByte) + kRoom, 0, cellWidth_, rowHeight_),
                         Qt::AlignVCenter, QLatin1Char('+') + QString::number(byte));
}

void MemoryView::paintLine(QPainter& painter, const core::MemoryLine& line, int y) const {
    painter.setPen(palette().color(QPalette::Text));
    if (line.rows != 1) {
        painter.drawText(QRect(left_, y, viewport()->width() - left_, rowHeight_),
                         Qt::AlignVCenter | Qt::TextSingleLine, leftOutText(line));
        return;
    }
    painter.drawText(QRect(-horizontalScrollBar()->value(), y, left_ - 2 * kRoom, rowHeight_),
                     Qt::AlignVCenter | Qt::AlignRight, QString::number(line.firstByte));
    for (const auto& segment : core::segmentsOf(*map_, line, bytesPerRow_))
        paintSegment(painter, segment,
                     boxOf(segment.begin, segment.end, line.firstByte * kByte, y));
}

QString MemoryView::leftOutText(const core::MemoryLine& line) const {
    const auto piece = map_->runs()[line.firstRun].piece;
    const auto rows = formatted(static_cast<std::size_t>(line.rows));
    if (piece == core::MemoryMap::kGap)
        return translated(kContext, "⋮ {} more rows in which nothing lies", {rows});
    return translated(kContext, "⋮ {} more rows of {}",
                      {rows, toQt(map_->pieces()[piece].element->name())});
}

QBrush MemoryView::brushOf(const core::MemorySegment& segment) const {
    constexpr int kFaint = 15; // percent
    constexpr int kStrong = 30;
    const auto base = palette().color(QPalette::Base);
    if (segment.piece == core::MemoryMap::kGap)
        return {palette().color(QPalette::PlaceholderText), Qt::Dense7Pattern};
    if (segment.shared)
        return {palette().color(kErrorRole), Qt::BDiagPattern};
    if (isBits(map_->pieces()[segment.piece]))
        return mixed(base, QColor(0xe0, 0xa0, 0x20), kFaint);
    return mixed(base, palette().color(QPalette::Highlight),
                 segment.piece % 2 == 0 ? kFaint : kStrong);
}

void MemoryView::paintSegment(QPainter& painter, const core::MemorySegment& segment,
                              const QRect& box) const {
    painter.fillRect(box, brushOf(segment));
    if (segment.piece == core::MemoryMap::kGap)
        return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawRect(box.adjusted(0, 0, 0, -1));
    painter.setPen(palette().color(QPalette::Text));
    const auto& piece = map_->pieces()[segment.piece];
    if (isBits(piece)) {
        paintBits(painter, segment, box);
        return;
    }
    QString label = segment.shared ? QStringLiteral("! ") : QString();
    if (piece.begin < segment.begin)
        label += QStringLiteral("…");
    label += toQt(piece.element->name());
    painter.drawText(box.adjusted(kRoom, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(label, Qt::ElideRight, box.width() - kRoom));
}

void MemoryView::paintBits(QPainter& painter, const core::MemorySegment& segment,
                           const QRect& box) const {
    const auto count = static_cast<int>(segment.end - segment.begin);
    painter.setFont(bitFont());
    for (int i = 0; i != count; ++i) {
        const auto bit = (segment.begin + static_cast<std::uint64_t>(i)) % kByte;
        painter.drawText(
            QRect(box.x() + i * box.width() / count, box.y(), box.width() / count, box.height()),
            Qt::AlignCenter, segment.shared ? QStringLiteral("!") : QString::number(bit));
    }
    painter.setFont(font());
}

void MemoryView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    layOut();
}

void MemoryView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOut();
}

// Where several elements lie, one click after the other leads to each of them.
void MemoryView::mouseReleaseEvent(QMouseEvent* event) {
    const auto bit =
        event->button() == Qt::LeftButton ? bitAt(event->position().toPoint()) : std::nullopt;
    if (!bit)
        return;
    const auto here = map_->piecesAt(*bit, kMostAtABit);
    if (here.empty())
        return;
    auto chosen = here.begin();
    if (const auto now = current_ ? std::ranges::find(here, *current_) : here.end();
        now != here.end() && std::next(now) != here.end())
        chosen = std::next(now);
    auto* const element = map_->pieces()[*chosen].element;
    setCurrent(element);
    emit activated(element);
}

void MemoryView::step(int by) {
    if (!map_ || map_->pieces().empty())
        return;
    const auto last = static_cast<std::ptrdiff_t>(map_->pieces().size()) - 1;
    const auto beyond = by > 0 ? std::ptrdiff_t{-1} : last + 1;
    const auto from = current_ ? static_cast<std::ptrdiff_t>(*current_) : beyond;
    current_ = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + by, 0, last));
    describeCurrent();
    showCurrent();
    viewport()->update();
}

void MemoryView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        step(-1);
        break;
    case Qt::Key_Right:
        step(1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (map_ && current_)
            emit activated(map_->pieces()[*current_].element);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

bool MemoryView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), withoutFormat(textAt(help->pos())), viewport());
    return true;
}

void MemoryView::showCurrent() {
    if (!map_ || !current_)
        return;
    auto* const bar = verticalScrollBar();
    const int y = yOf(lineOf(map_->pieces()[*current_].begin));
    if (y < rowHeight_)
        bar->setValue(bar->value() + y - rowHeight_);
    else if (y + rowHeight_ > viewport()->height())
        bar->setValue(bar->value() + y + rowHeight_ - viewport()->height());
}

} // namespace corvane::workbench::gui
