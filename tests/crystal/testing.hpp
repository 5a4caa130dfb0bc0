// What the tests of crystallography share: files of others, groups that must be made, operators as sets.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "crystal/space_group.hpp"
#include "crystal/structure_file.hpp"
#include "real_path.hpp"

namespace vntl::test {

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

// Texts of structure files are read from a file that goes with the test.
struct Structure_Texts : testing::Test {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / ("structure_" + std::to_string(::getpid()) + ".txt");
    ~Structure_Texts() override { std::filesystem::remove(path); }

    Status Read(const std::string& text, Crystal_Structure& structure, std::string_view mode) const {
        std::ofstream(path, std::ios::binary) << text;
        return Read_Structure_File(path.string(), structure, mode);
    }
};

}  // namespace vntl::test
