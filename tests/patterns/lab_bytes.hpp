// Binary files of diffractometers, written byte by byte from their layouts: for the readers and for what recognises them.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace vntl::test {

// Bytes, zero where nothing was put.
class File_Bytes {
public:
    explicit File_Bytes(std::size_t size, std::string_view mark = {}) : bytes_(size, '\0') { Text(0, mark); }

    template <class Number>
    File_Bytes& Put(std::size_t at, Number number) {
        std::memcpy(bytes_.data() + at, &number, sizeof number);
        return *this;
    }
    File_Bytes& Text(std::size_t at, std::string_view text) {
        bytes_.replace(at, text.size(), text);
        return *this;
    }
    const std::string& All() const { return bytes_; }

private:
    std::string bytes_;
};

template <class Number>
std::string Numbers(const std::vector<Number>& numbers) {
    return {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(Number)};
}

using Counts = std::vector<float>;

inline std::string Raw_1_Block(const Counts& y, double start, std::uint32_t more) {
    File_Bytes head(156, "RAW ");
    head.Put(4, static_cast<std::uint32_t>(y.size())).Put(8, 2.5f).Put(12, 0.25f).Put(16, 0x7f123456u);
    head.Put(24, static_cast<float>(start)).Put(28, -1e6f).Put(32, 45.0f).Text(40, "Vinegar                         ");
    head.Put(36, 7.0f).Put(72, 1.54f).Put(76, 1.544f).Put(152, more);
    return head.All() + Numbers(y);
}

inline std::string Raw_2(const std::vector<Counts>& ranges, std::uint16_t told) {
    File_Bytes head(256, "RAW2");
    head.Put(4, told).Text(8, "Zinc").Text(40, "a note").Text(168, "19-12-199721:57").Text(188, "Cu");
    head.Put(190, 1.54f).Put(194, 1.544f).Put(198, 0.5f).Put(206, 1.39f);
    std::string file = head.All();
    for (const Counts& y : ranges) {
        const std::uint16_t kelvin = &y == &ranges.front() ? 65535 : 300;
        File_Bytes range(60);
        range.Put(0, std::uint16_t{60}).Put(2, static_cast<std::uint16_t>(y.size())).Put(8, 3.0f).Put(12, 0.5f).Put(16, 5.0f);
        range.Put(46, kelvin);
        file += range.All() + Numbers(y);
    }
    return file;
}

inline std::string Raw_101_Head(std::uint32_t ranges) {
    File_Bytes head(712, "RAW1.01");
    head.Put(8, 3u).Put(12, ranges).Text(16, "14/03/88").Text(26, "10:11:12").Text(326, "K\xE4se").Text(608, "CU");
    head.Text(36, "me").Text(108, "a hall").Text(386, "a note").Put(564, 280.0f).Put(664, 60.0f);
    head.Put(616, 1.5418).Put(624, 1.54).Put(632, 1.544).Put(640, 1.39).Put(648, 0.5);
    return head.All();
}

// A range that starts at 1 of theta, 2 of 2theta, 3 of chi, 4 of phi, 5 of x and 6 of y, in steps of 0.5; z is not there. `records` are
// its points with what stands in front of them, of so many bytes each.
inline std::string Raw_101_Range(std::uint32_t type, std::uint32_t n, const std::string& records, std::uint32_t varying = 0,
                                 std::uint32_t record = 4, std::uint32_t supplement = 0, float kelvin = 0) {
    File_Bytes range(304);
    range.Put(0, 304u).Put(4, n).Put(56, 9999.0).Put(176, 0.5).Put(192, 2.0f).Put(196, type).Put(212, kelvin);
    for (std::size_t i = 0; i < 6; ++i) range.Put(8 + 8 * i, 1.0 + static_cast<double>(i));
    range.Put(168, 1).Put(224, 40u).Put(228, 30u).Put(240, 1.5418).Put(248, varying).Put(252, record).Put(256, supplement);
    return range.All() + records;
}

inline std::string Raw_400_Segment(std::uint32_t type, std::string_view key, const std::string& behind, std::size_t place = 36) {
    const auto length = static_cast<std::uint32_t>(place + behind.size());
    return File_Bytes(length).Put(0, type).Put(4, length).Text(12, key).Text(place, behind).All();
}

inline std::string Raw_400_Range(std::string_view scan, std::uint32_t n, const std::string& records, std::uint32_t record) {
    const std::string drives = Raw_400_Segment(50, "2Theta", Numbers<double>({77}), 56) + Raw_400_Segment(999, "unknown", "\1\2\3");
    File_Bytes head(160);
    head.Text(32, scan)
        .Put(72, 10.0)
        .Put(80, 0.5)
        .Put(88, n)
        .Put(92, 76.8f)
        .Put(100, 40.0f)
        .Put(104, 30.0f)
        .Put(112, 1.5418)
        .Put(136, record);
    return head.Put(140, static_cast<std::uint32_t>(drives.size())).All() + drives + records;
}

// A single line, where `alpha2` and the ratio are 0.
inline std::string Raw_400(std::uint32_t told, const std::string& ranges, double alpha2 = 0, double ratio = 0) {
    File_Bytes tube(136);
    tube.Put(0, 30u).Put(4, 136u).Put(72, 1.5418).Put(80, 1.54).Put(88, alpha2).Put(96, 1.39).Put(104, ratio).Text(116, "Cu");
    const std::string comment(7000, 'c');
    const std::string segments = Raw_400_Segment(10, "SAMPLEID", "An ore") + Raw_400_Segment(10, "COMMENT", comment) + tube.All();
    File_Bytes head(61, "RAW4.00");
    head.Text(12, "01/01/0001").Put(40, told).Put(56, static_cast<std::uint32_t>(segments.size()));
    return head.All() + segments + ranges;
}

// Two ranges in records 3 and 5, the first of i4 and the second of i2 counts, in steps of 0.25 from 10.
inline std::string Stoe(std::int16_t planned, std::int16_t done, float factor = 1, std::int32_t least = 4, float angle_step = 0.25f) {
    File_Bytes file(3072, "RAW_1.06");
    file.Text(16, "22-Sep-20 17:18").Text(32, "A title").Text(112, "a note").Put(310, std::int16_t{3}).Put(322, 1.54f);
    file.Put(318, std::int16_t{40}).Put(320, std::int16_t{30}).Put(326, 1.544f).Put(358, std::int16_t{2});
    file.Put(376, planned).Put(378, done).Put(480, std::int16_t{3}).Put(482, std::int16_t{5});
    for (const std::size_t at : {1024, 2048}) {
        file.Put(at + 34, std::int16_t{3}).Put(at + 38, static_cast<std::int16_t>(at == 2048)).Put(at + 40, factor);
        file.Put(at + 44, 10.0f)
            .Put(at + 48, 5.0f)
            .Put(at + 52, 10 + 2 * angle_step)
            .Put(at + 56, 5.25f)
            .Put(at + 60, angle_step)
            .Put(at + 64, 0.125f)
            .Put(at + 68, 100.0f);
        file.Put(at + 120, least).Put(at + 124, std::int32_t{9});
    }
    file.Text(1536, Numbers<std::int32_t>({4, 9, 6})).Text(2560, Numbers<std::int16_t>({9, 4, 6}));
    return file.All();
}

inline std::string Rd(std::string_view mark, bool continuous, int n) {
    File_Bytes file(mark == "V5RD" ? 810 : 250, mark);
    file.Put(85, std::uint8_t{2}).Put(94, 1.789).Put(102, 1.793).Put(110, 0.5).Put(126, static_cast<std::uint8_t>(continuous));
    file.Put(90, std::uint16_t{40}).Put(92, std::uint16_t{30});
    file.Put(128, std::uint16_t{4}).Put(130, std::uint16_t{600}).Put(132, std::uint16_t{640});
    file.Put(214, 0.02).Put(222, 3.0).Put(230, 3.2).Text(138, "FILE    ").Text(146, "A clay");
    return file.All() + Numbers(std::vector<std::uint16_t>(static_cast<std::size_t>(n), 96));
}

inline std::string Rigaku_Binary(const Counts& y, std::uint32_t told) {
    File_Bytes head(3158, std::string_view("FI\0\0", 4));
    head.Text(84, "me").Text(1238, "Cu").Put(1220, 1.544).Put(1228, 1.39).Put(2950, std::uint16_t{40}).Put(2952, std::uint16_t{30});
    head.Text(104, "A powder").Put(1212, 1.54).Put(2962, 10.0f).Put(2966, 11.0f).Put(2970, 0.5f).Put(3154, told);
    return head.All() + Numbers(y);
}

inline std::string Rigaku_Text(std::string_view mode, int told, const std::string& intensities) {
    std::string text = ".RAW\r" + std::string("18-MAR-99\0\0\0\r", 13) + " \rSteel\r" + std::string(8, '\r') + "CU\r \r \r";
    text += std::string(mode) + "\r \r \r1.5418\r1.540598\r1.544426\r \r  20.000\r   0.050\r" + std::to_string(told) + " 1\r  8.00\r";
    return text + std::string(5, '\r') + "  112.\r" + std::string(6, '\r') + intensities;
}

}  // namespace vntl::test
