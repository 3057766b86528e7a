#pragma once

#include "dbimport/Messages.hpp"

namespace corvane::workbench::plugins::s7Driver {

/// A pushback slot for one character: a "/" or "(" that was read while looking for a comment and
/// began none.
class Accumulator {
public:
    [[nodiscard]] bool present() const { return present_; }

    /// Only meaningful while `present`.
    [[nodiscard]] char character() const { return character_; }

    /// Throws std::runtime_error when there is a character already.
    void put(char character) {
        if (present_)
            fail(Message::accumulatorFull);
        character_ = character;
        present_ = true;
    }

    /// Gives the character and clears the slot; only to be called while `present`.
    char take() {
        present_ = false;
        return character_;
    }

    void clear() { present_ = false; }

private:
    char character_ = '\0';
    bool present_ = false;
};

} // namespace corvane::workbench::plugins::s7Driver
