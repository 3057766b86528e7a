#include "GivenSkill.hpp"

namespace corvane::workbench::test {

namespace {

class Careless final : public GivenSkill {
public:
    using GivenSkill::GivenSkill;
    [[nodiscard]] std::unique_ptr<skill::Skill> createSkill() const override {
        throw 1; // NOLINT(hicpp-exception-baseclass): what careless code may do
    }
};

const Careless kSkill("Careless", numberedUuid(50));

} // namespace

} // namespace corvane::workbench::test
