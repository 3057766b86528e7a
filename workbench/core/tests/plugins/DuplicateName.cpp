#include "GivenSkill.hpp"

namespace corvane::workbench::test {

namespace {

const GivenSkill kSkill(kWiringName, numberedUuid(20));

} // namespace

} // namespace corvane::workbench::test
