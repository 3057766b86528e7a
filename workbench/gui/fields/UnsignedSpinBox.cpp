#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <QLineEdit>

#include <algorithm>
#include <limits>

namespace corvane::workbench::gui {

namespace {

// As long as any number that may have been stored: a line would cut what is longer. It bounds the
// leading zeros that a user may type; what is too large is not valid.
constexpr int kMaxDigits = std::numeric_limits<std::uint64_t>::digits10 + 1;

} // namespace

UnsignedSpinBox::UnsignedSpinBox(QWidget* parent) : QAbstractSpinBox(parent) {
    setAccelerated(true);
    lineEdit()->setMaxLength(kMaxDigits);
    connect(this, &QAbstractSpinBox::editingFinished, this, &UnsignedSpinBox::takeText);
    setValue(0);
}

void UnsignedSpinBox::setRange(std::uint64_t minimum, std::uint64_t maximum, std::uint64_t step) {
    minimum_ = minimum;
    maximum_ = maximum;
    step_ = step;
}

void UnsignedSpinBox::setMinimumDigits(int digits) {
    minimumDigits_ = digits;
    setValue(value_);
}

void UnsignedSpinBox::setValue(qulonglong value) {
    value_ = value;
    const auto text = shown();
    if (lineEdit()->text() != text)
        lineEdit()->setText(text);
}

// From a number outside the limits the first step leads to the nearest one inside.
void UnsignedSpinBox::stepBy(int steps) {
    takeText();
    const auto count = static_cast<std::uint64_t>(std::abs(static_cast<long long>(steps)));
    const auto room =
        steps > 0 ? maximum_ - std::min(value_, maximum_) : std::max(value_, minimum_) - minimum_;
    const auto distance = step_ != 0 && count > room / step_ ? room : std::min(room, count * step_);
    const auto next = steps > 0 ? value_ + distance : value_ - distance;
    enter(std::clamp(next, minimum_, maximum_));
    selectAll();
}

QAbstractSpinBox::StepEnabled UnsignedSpinBox::stepEnabled() const {
    StepEnabled enabled = StepNone;
    if (isReadOnly())
        return enabled;
    if (value_ < maximum_)
        enabled |= StepUpEnabled;
    if (value_ > minimum_)
        enabled |= StepDownEnabled;
    return enabled;
}

QValidator::State UnsignedSpinBox::validate(QString& input, int&) const {
    if (input.isEmpty())
        return QValidator::Intermediate;
    if (!std::ranges::all_of(input,
                             [](QChar c) { return utils::string::ascii::isDigit(c.unicode()); }))
        return QValidator::Invalid;
    bool fits = false;
    const std::uint64_t number = input.toULongLong(&fits);
    if (!fits || number > std::max(maximum_, value_))
        return QValidator::Invalid;
    return isWithin(number) ? QValidator::Acceptable : QValidator::Intermediate;
}

void UnsignedSpinBox::fixup(QString& input) const { input = shown(); }

void UnsignedSpinBox::takeText() {
    bool isNumber = false;
    const std::uint64_t number = lineEdit()->text().toULongLong(&isNumber);
    if (isNumber && isWithin(number))
        enter(number);
    else
        setValue(value_);
}

QString UnsignedSpinBox::shown() const {
    return QString::number(value_).rightJustified(minimumDigits_, QLatin1Char('0'));
}

void UnsignedSpinBox::enter(std::uint64_t value) {
    const bool changes = value != value_;
    setValue(value);
    if (changes)
        emit valueEntered(value);
}

} // namespace corvane::workbench::gui
