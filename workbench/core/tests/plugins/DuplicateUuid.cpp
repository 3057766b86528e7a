#include "GivenSkill.hpp"

namespace corvane::workbench::test {

namespace {

const GivenSkill kSkill("Impostor", kWiringUuid);

} // namespace

} // namespace corvane::workbench::test
