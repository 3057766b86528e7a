// A module that was made for a platform that has more than this one.
extern "C" int corvaneSymbolThatNobodyHas();

namespace {

[[maybe_unused]] const int kResult = corvaneSymbolThatNobodyHas();

} // namespace
