#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace corvane::workbench {

template <class Signature>
class FunctionRef;

/// A non-owning reference to a callable, two words wide: a parameter type for callbacks that are
/// used only until the call returns. The callable must outlive the reference.
template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
public:
    template <class Callable>
        requires(!std::same_as<std::remove_cvref_t<Callable>, FunctionRef> &&
                 std::is_invocable_r_v<Result, Callable&, Arguments...>)
    FunctionRef(Callable&& callable)
        : object_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          call_([](void* object, Arguments... arguments) -> Result {
              return std::invoke_r<Result>(*static_cast<std::remove_reference_t<Callable>*>(object),
                                           std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const {
        return call_(object_, std::forward<Arguments>(arguments)...);
    }

private:
    void* object_;
    Result (*call_)(void*, Arguments...);
};

} // namespace corvane::workbench
