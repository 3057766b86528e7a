#pragma once

#include <corvane/utils/json/Decoder.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::testing {

/// "path dataType address" of every item of the document, a struct as its path and a colon, each
/// followed by its size and access where they are not the usual ones.
class Listing {
public:
    explicit Listing(std::string text) : document_(std::move(text)) {}

    std::vector<std::string> lines() {
        list(document_.root().asArray(), "");
        return lines_;
    }

private:
    void list(utils::json::decoder::Array elements, const std::string& prefix) {
        while (auto element = elements.next()) {
            utils::json::decoder::Object entry = element->asObject();
            auto member = entry.next();
            const std::string key(member->name.view());
            utils::json::decoder::Object object = member->value.asObject();
            if (key == "@Skill.S7.Item")
                item(object, prefix);
            else
                container(object, key, prefix);
            EXPECT_FALSE(entry.next());
        }
    }

    void container(utils::json::decoder::Object& object, const std::string& key,
                   const std::string& prefix) {
        std::string name;
        while (auto member = object.next()) {
            if (member->name.view() == "name") {
                name = member->value.asString().view();
                if (key == "@Skill.S7.Struct")
                    lines_.push_back(prefix + name + ":");
            } else if (member->name.view() == "children") {
                list(member->value.asArray(),
                     key == "@Skill.S7.Struct" ? prefix + name + "." : prefix);
            }
        }
    }

    void item(utils::json::decoder::Object& object, const std::string& prefix) {
        std::string line = prefix;
        std::string members;
        while (auto member = object.next()) {
            const std::string name(member->name.view());
            members += name + " ";
            if (name == "stringSize")
                line += " (" + std::string(member->value.parseNumberString()) + ")";
            else if (name == "writable")
                line += member->value.asBool() ? "" : " readonly";
            else if (name == "command")
                EXPECT_EQ(member->value.asString().view(), "Default Command");
            else
                line += (name == "name" ? "" : " ") + std::string(member->value.asString().view());
        }
        EXPECT_TRUE(members == "name dataType address writable command " ||
                    members == "name dataType stringSize address writable command ")
            << members;
        lines_.push_back(line);
    }

    utils::json::decoder::Document document_;
    std::vector<std::string> lines_;
};

} // namespace corvane::workbench::plugins::s7Driver::testing
