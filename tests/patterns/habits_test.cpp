// A file of each format through the whole way of reading, as each system and program would have written it.
#include <unistd.h>

#include <filesystem>

#include "patterns/read_pattern.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

// What a file gives: its pattern, then those of a reading of all.
struct Contents {
    Recognition look;
    std::vector<Diffraction_Pattern_Type> patterns;
};

Contents Written_And_Read(const Sample_File& sample, const std::string& text) {
    const std::string file = (std::filesystem::temp_directory_path() / ("vantrelo " + std::to_string(::getpid()) + sample.name)).string();
    std::ofstream(file, std::ios::binary) << text;
    Contents contents{Recognise_Format(file), {{}}};
    const std::string_view mode = Pattern_Formats()[static_cast<std::size_t>(sample.code - 1)].mode;
    const Status status = Read_Pattern(file, contents.patterns.front(), mode);
    EXPECT_TRUE(status.ok()) << status.message;
    std::vector<Diffraction_Pattern_Type> several;
    Read_Notes messages;
    if (Read_Pattern_Mult(file, several, 9, mode, messages).ok())
        contents.patterns.insert(contents.patterns.end(), several.begin(), several.end());
    EXPECT_TRUE(messages.failed.empty());
    std::filesystem::remove(file);
    return contents;
}

TEST(Habits, OfOtherWritersDoNotMatter) {
    for (const int n : {40, 403, 6000}) {
        for (const Sample_File& sample : Sample_Files(n)) {
            SCOPED_TRACE(sample.name + ' ' + std::to_string(n));
            const Contents plain = Written_And_Read(sample, sample.text);
            EXPECT_EQ(plain.look.by_content, Lower(sample.name).ends_with(".mdi") ? 0 : sample.code);
            EXPECT_GT(plain.patterns.front().npts, n - 11);  // some formats leave out their last line
            EXPECT_EQ(plain.patterns.front().npts, static_cast<int>(plain.patterns.front().x.size()));
            EXPECT_EQ(plain.patterns.size() > 2, sample.patterns > 1);
            EXPECT_EQ(Contains(sample.text, sample_title), Contains(plain.patterns.front().title, sample_title));
            auto habits = Habits(sample.text);
            habits.emplace_back("mark", "\xEF\xBB\xBF" + sample.text);
            habits.emplace_back("end mark", sample.text + "\x1a");
            for (const auto& [habit, text] : habits) {
                const Contents again = Written_And_Read(sample, text);
                EXPECT_EQ(again.look.by_content, plain.look.by_content) << habit;
                EXPECT_EQ(again.look.banks, plain.look.banks) << habit;
                ASSERT_EQ(again.patterns.size(), plain.patterns.size()) << habit;
                for (std::size_t i = 0; i < again.patterns.size(); ++i) Expect_Same(again.patterns[i], plain.patterns[i], habit);
            }
        }
    }
}

}  // namespace
}  // namespace vntl::test
