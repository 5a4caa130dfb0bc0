// What a script's `print` can tell: a topic is a name and a routine that puts it into JSON objects, one a line.
//
// Each room gives the topics of what it holds, beside that; the script collects them.
#pragma once

#include <cmath>
#include <cstdio>
#include <functional>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "base/text.hpp"

namespace vntl {

using Json = nlohmann::ordered_json;
using Words = std::span<const std::string>;
using Put_Line = std::function<void(const Json&)>;

struct Topic {
    std::string_view name;
    std::function<Status(Words words, const Put_Line& put)> print;  // `words` are those behind the name
};

// A topic of one object, without words of its own.
template <class Make>
Topic Plain_Topic(std::string_view name, Make make) {
    return {name, [make](Words words, const Put_Line& put) {
                if (!words.empty()) return Status::Fail("usage: print WHAT");
                put(make());
                return Status::Done();
            }};
}

// A real with 9 significant digits, which single precision never exceeds; null for NaN and infinities.
inline Json Json_Real(double value) {
    if (!std::isfinite(value)) return nullptr;
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", value);
    return std::strtod(text, nullptr);
}

inline std::string Json_Text(std::string_view text) { return std::string(Trim_Right(text)); }

// Lists of them.
template <class Values>
Json Json_Reals(const Values& values) {
    Json list = Json::array();
    for (const auto value : values) list.push_back(Json_Real(value));
    return list;
}
template <class Texts>
Json Json_Texts(const Texts& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) list.push_back(Json_Text(text));
    return list;
}

}  // namespace vntl
