#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <QString>

#include <cstdint>
#include <string>

namespace corvane::workbench::gui {

enum class Severity : std::uint8_t {
    error,   // a value is wrong
    warning, // nothing is, but it looks as if
};

/// A line of the list of problems.
struct Problem {
    Severity severity;
    model::Element* element;
    QString path;
    std::string key; // of the field's control; empty where the form shows none
    QString field;   // its label
    QString message;
    friend bool operator==(const Problem&, const Problem&) = default;
};

/// The most problems of each severity that are listed; all are counted.
inline constexpr std::size_t kMaxListedProblems = 10'000;

} // namespace corvane::workbench::gui
