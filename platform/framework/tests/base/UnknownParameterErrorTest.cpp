#include <corvane/workbench/config/UnknownParameterError.hpp>

#include <gtest/gtest.h>

namespace corvane::workbench::config {
namespace {

TEST(UnknownParameterError, CarriesTheMembersName) {
    for (const std::string name : {"colour", "", "a \"b\"", "\u00e4"}) {
        try {
            throwUnknownParameterError(name);
        } catch (const UnknownParameterError& error) {
            EXPECT_EQ(error.name(), name);
            EXPECT_EQ(error.what(), "unknown member “" + name + "”");
        }
    }
}

TEST(UnknownParameterError, IsARuntimeError) {
    EXPECT_THROW(throwUnknownParameterError("x"), std::runtime_error);
}

} // namespace
} // namespace corvane::workbench::config
