#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace corvane::workbench {

template <class Signature>
class function_ref;

/// A non-owning reference to a callable, two words wide: a parameter type for callbacks that are
/// used only until the call returns. The callable must outlive the reference.
///
/// A copy refers to the same callable. What the callable throws passes through; a result that the
/// signature does not ask for is dropped. It is not to be stored: a lambda written as an argument
/// is gone when the call has returned.
///
///     bool forEachEvent(function_ref<bool(const process::Event&)> visit) const;
///     element.forEachEvent([&](const auto& event) { return event.name() == wanted; });
template <class Result, class... Arguments>
class function_ref<Result(Arguments...)> {
public:
    /// Refers to `callable`: a function, a lambda or another object that can be called. Implicit,
    /// so that a caller just writes the lambda.
    template <class Callable>
        requires(!std::same_as<std::remove_cvref_t<Callable>, function_ref> &&
                 std::is_invocable_r_v<Result, Callable&, Arguments...>)
    function_ref(Callable&& callable)
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
