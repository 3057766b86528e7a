// A module that can be loaded and brings nothing.
namespace {

[[maybe_unused]] const int kNothing = 0;

} // namespace
