#pragma once

#include <QAbstractSpinBox>

#include <cstdint>

namespace corvane::workbench::gui {

/// A spin box over unsigned numbers of up to 64 bits, which Qt's own ones do not reach. It takes
/// only numbers within its limits, but shows any other that it is given.
class UnsignedSpinBox final : public QAbstractSpinBox {
    Q_OBJECT
    Q_PROPERTY(qulonglong value READ value WRITE setValue NOTIFY valueEntered)

public:
    explicit UnsignedSpinBox(QWidget* parent);

    void setRange(std::uint64_t minimum, std::uint64_t maximum, std::uint64_t step);

    /// A number of fewer digits is shown with zeros in front.
    void setMinimumDigits(int digits);

    [[nodiscard]] qulonglong value() const { return value_; }
    void setValue(qulonglong value);

    /// Takes the number that stands in the line if it lies within the limits, else shows the value
    /// again. Leaving the box and Enter do the same.
    void takeText();

    void stepBy(int steps) override;
    QValidator::State validate(QString& input, int& position) const override;
    void fixup(QString& input) const override;

signals:
    /// The user has stepped to a number, or typed one and left the field or pressed Enter.
    void valueEntered(qulonglong value);

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;

private:
    void enter(std::uint64_t value);
    [[nodiscard]] QString shown() const; // the value's text
    [[nodiscard]] bool isWithin(std::uint64_t value) const {
        return value >= minimum_ && value <= maximum_;
    }

    std::uint64_t value_ = 0;
    std::uint64_t minimum_ = 0;
    std::uint64_t maximum_ = 0;
    std::uint64_t step_ = 1;
    int minimumDigits_ = 0;
};

} // namespace corvane::workbench::gui
