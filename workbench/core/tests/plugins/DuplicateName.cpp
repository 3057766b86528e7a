#include "GivenSkill.hpp"

namespace corvane::workbench::test {

namespace {

const GivenSkill kSkill(kBenchName, numberedUuid(20));

} // namespace

} // namespace corvane::workbench::test
