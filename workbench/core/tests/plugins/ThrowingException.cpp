#include "GivenSkill.hpp"

#include <exception>

namespace corvane::workbench::test {

namespace {

/// Its code goes with the module, before anyone has read its text.
class LicenceError final : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "the licence has ended"; }
};

class Unlicensed final : public GivenSkill {
public:
    using GivenSkill::GivenSkill;
    [[nodiscard]] std::unique_ptr<skill::Skill> createSkill() const override {
        throw LicenceError();
    }
};

const Unlicensed kSkill("Unlicensed", numberedUuid(40));

} // namespace

} // namespace corvane::workbench::test
