// What the tests of crystallography share: files of others, groups that must be made, operators as sets.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "crystal/space_group.hpp"

namespace vntl::test {

inline std::string Real_Path(const std::string& name) {
    const char* set = std::getenv("VANTRELO_DATA");
    return (set != nullptr ? std::string(set) : SOURCE_TREE "/../shared/data") + '/' + name;
}

// The rows of a file of tab-separated words, without its head; none where the file is not to be had.
inline std::vector<std::vector<std::string>> Real_Table(const std::string& name) {
    std::ifstream stream(Real_Path(name));
    std::vector<std::vector<std::string>> rows;
    std::string line, word;
    std::getline(stream, line);
    while (std::getline(stream, line)) {
        std::istringstream words(line);
        for (rows.emplace_back(); std::getline(words, word, '\t');) rows.back().push_back(word);
    }
    return rows;
}

inline Space_Group_Type Group(std::string_view symbol, std::string_view mode = {}, const std::vector<std::string>& generators = {}) {
    Space_Group_Type group;
    const Status status = Set_SpaceGroup(symbol, group, generators, mode);
    EXPECT_FALSE(status.failed) << symbol << ' ' << mode << ": " << status.message;
    return group;
}

inline std::vector<Seitz> Operator_Set(const Space_Group_Type& group) {
    std::vector<Seitz> operators = Exact_Operators(group);
    std::sort(operators.begin(), operators.end());
    return operators;
}

}  // namespace vntl::test
