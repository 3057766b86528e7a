#pragma once

#include <gtest/gtest.h>

#include <string>

namespace corvane::utils::test {

/// The message of the `Exception` that `action` throws; fails the test when it throws none.
template <typename Exception>
std::string messageOf(auto action) {
    try {
        static_cast<void>(action());
    } catch (const Exception& exception) {
        return exception.what();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

} // namespace corvane::utils::test
