// Files that were made smaller. What is unpacked was packed by the programs compress and gzip (the short ones, as bytes) or by the writer
// below, whose files gzip reads.
#include "base/expand.hpp"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace vntl {
namespace {

// By gzip, with their line ends.
constexpr std::string_view one_run = "1f8b0800000000000003cbcf4b55282acde30200b0863fa608000000";
constexpr std::string_view and_another = "1f8b08000000000002034bcc4b5148cccb2fc9482de20200cf3517ef0c000000";

std::string Bytes(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    return bytes;
}

// Packs as compress does: a table of strings, each a code, and code 256 where the table is emptied after that many bytes (never with 0).
// The codes go out bit by bit.
std::string Compressed(std::string_view plain, unsigned most_width, bool may_empty, std::size_t empty_after = 0) {
    std::string packed = "\x1f\x9d";
    packed += static_cast<char>(most_width | (may_empty ? 0x80u : 0u));
    std::map<std::pair<unsigned, char>, unsigned> table;  // a string's code and a byte, the code of both
    std::vector<bool> bits;
    const unsigned first = may_empty ? 257 : 256;
    unsigned width = 9, next = first, word = 0;
    const auto flush = [&](std::size_t group, unsigned new_width) {
        while (bits.size() % group != 0) bits.push_back(false);
        for (std::size_t i = 0; i < bits.size(); ++i) {
            if (i % 8 == 0) packed += '\0';
            if (bits[i]) packed.back() = static_cast<char>(packed.back() | (1 << i % 8));
        }
        bits.clear();
        width = new_width;
    };
    const auto put = [&](unsigned code) {
        for (unsigned k = 0; k < width; ++k) bits.push_back(((code >> k) & 1u) != 0);
        if (code != 256 && next > (1u << width) - 1 && width < most_width) flush(8 * width, width + 1);
    };
    for (std::size_t taken = 0; taken < plain.size(); ++taken) {
        const char c = plain[taken];
        const auto longer = table.find({word, c});
        if (taken > 0 && longer != table.end()) {
            word = longer->second;
            continue;
        }
        if (taken > 0) put(word);
        if (taken > 0 && next < 1u << most_width) table[{word, c}] = next++;
        word = static_cast<unsigned char>(c);
        if (may_empty && empty_after > 0 && taken > 0 && (taken + 1) % empty_after == 0) {
            put(256);
            flush(8 * width, 9);
            table.clear();
            next = first;
        }
    }
    if (!plain.empty()) put(word);
    flush(8, width);
    return packed;
}

// Columns of counts, noise, and long runs of one byte: codes of all widths, and codes that stand for the string just being made.
std::string Sample(std::size_t size) {
    std::mt19937 random(7);
    std::string text;
    while (text.size() < size / 2) {
        const std::string number = std::to_string(random() % 3000);
        text += std::string(8 - number.size(), ' ') + number;
    }
    text += std::string(size / 8, 'a') + "abababababab";
    while (text.size() < size) text += static_cast<char>(random() & 0xff);
    return text;
}

TEST(Expand, WhatTheProgramsMakeAndWhatIsNotPacked) {
    struct Case {
        std::string packed, plain;
    };
    const std::string one = Bytes(one_run), other = Bytes(and_another);
    const Case cases[] = {{"", ""},
                          {"R3A 1 2 3\n", "R3A 1 2 3\n"},
                          {"\x1f", "\x1f"},
                          {Bytes("1f9d90"), ""},
                          {Bytes("1f9d9061c4041c28b02041"), "abababababababab"},
                          {Bytes("1f9d9061020a1c1810"), "aaaaaaaaaaaa"},
                          {one, "one run\n"},
                          {one + other + std::string(512, '\0'), "one run\nand another\n"}};
    for (const Case& c : cases) {
        std::string plain = "before";
        const Status status = Unpack(c.packed, plain);
        EXPECT_TRUE(status.ok()) << status.message;
        EXPECT_EQ(plain + '|' + Unpacked_Head(c.packed, 5), c.plain + '|' + c.plain.substr(0, 5));
    }
    EXPECT_TRUE(Packing_Of(cases[4].packed) == Packing::compress && Packing_Of(one) == Packing::gzip);
}

TEST(Expand, CodesOfEveryWidthWithAndWithoutATableThatIsEmptied) {
    const std::string text = Sample(300000);
    for (unsigned width = 9; width <= 16; ++width)
        for (const int empty_after : {-1, 0, 1, 313, 9973})  // -1: by no code
            for (const std::size_t size : {1u, 2u, 700u, 3000u, 300000u}) {
                if (size == text.size() && (empty_after == 1 || empty_after == 313)) continue;
                const std::string part = text.substr(text.size() - size);
                std::string plain;
                const Status status =
                    Unpack(Compressed(part, width, empty_after >= 0, static_cast<std::size_t>(std::max(empty_after, 0))), plain);
                ASSERT_TRUE(status.ok() && plain == part) << width << ' ' << empty_after << ' ' << size << ' ' << status.message;
            }
}

TEST(Expand, WhatIsCutOrChangedIsRefusedAndLeavesTheTextAlone) {
    const std::string zip = Bytes(one_run), text = Sample(3000), packed = Compressed(text, 12, true);
    std::string changed_sum = zip, odd_code = Bytes("1f9d90"), early_code = odd_code;
    changed_sum[changed_sum.size() - 8] ^= 1;
    odd_code += Bytes("61feff01");  // 'a', then a string that nobody has made
    early_code += Bytes("010300");  // a string at the beginning
    const std::string refused[] = {zip.substr(0, 2),
                                   zip + "more",
                                   zip + zip.substr(0, 15),
                                   changed_sum,
                                   odd_code,
                                   early_code,
                                   "\x1f\x9d",
                                   Bytes("1f9d88"),
                                   Bytes("1f9d916101"),
                                   Bytes("1f9d88610100"),
                                   packed.substr(0, packed.size() - 1) + "\xff\xff"};
    for (const std::string& bytes : refused) {
        std::string plain = "before";
        const Status status = Unpack(bytes, plain);
        EXPECT_TRUE(status.failed && !status.message.empty() && plain == "before") << &bytes - refused;
    }
    // A file of codes has no check sum: a cut between two of them cannot be seen.
    int told = 0;
    for (std::size_t size = 3; size < packed.size(); ++size) {
        std::string plain = "before";
        const bool ok = Unpack(packed.substr(0, size), plain).ok();
        told += ok ? 0 : 1;
        ASSERT_TRUE(ok ? text.starts_with(plain) : plain == "before") << size;
        ASSERT_TRUE(text.starts_with(Unpacked_Head(packed.substr(0, size), text.size())));
    }
    EXPECT_GT(told, static_cast<int>(packed.size() / 2));
    for (std::size_t size = 2; size < zip.size(); ++size) {
        std::string plain;
        ASSERT_TRUE(Unpack(zip.substr(0, size), plain).failed) << size;
    }
}

TEST(Expand, NoMoreThanIsAllowedComesOut) {
    const std::string text = std::string(100000, 'a') + "b";
    for (const std::string& packed : {Compressed(text, 16, true), text}) {
        std::string plain;
        EXPECT_TRUE(Unpack(packed, plain, text.size()).ok() && plain == text);
        for (const std::size_t most : {text.size() - 1, std::size_t{0}}) EXPECT_TRUE(Unpack(packed, plain, most).failed && plain == text);
        for (const std::size_t count : {0u, 1u, 777u, 99999u, 100001u, 200000u})
            EXPECT_TRUE(Unpacked_Head(packed, count) == text.substr(0, count)) << count;
    }
    std::string plain = "before";
    EXPECT_TRUE(Unpack(Bytes(one_run), plain, 8).ok() && Unpack(Bytes(one_run), plain, 7).failed);
    EXPECT_EQ(plain + Unpacked_Head(Bytes(one_run), 3), "one run\none");
}

}  // namespace
}  // namespace vntl
