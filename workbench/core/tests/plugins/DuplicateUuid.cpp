#include "GivenSkill.hpp"

namespace corvane::workbench::test {

namespace {

const GivenSkill kSkill("Impostor", kBenchUuid);

} // namespace

} // namespace corvane::workbench::test
