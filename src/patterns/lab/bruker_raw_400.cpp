// RAW4.00: segments of one kind or another for the file, and for each range a head of 160 bytes, segments again and its points.
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/lab/bruker_versions.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t first_segment = 61, range_head = 160;
constexpr std::uint32_t text_segment = 10, tube_segment = 30, drive_segment = 50;
constexpr std::size_t segment_head = 8, key_at = 12, key_width = 24, text_at = 36, place_at = 56;

// What the segments told.
struct Segment_Facts {
    std::string sample;
    Tube_Lines lines;
    Fact_List facts;

    void Take_Text(Byte_View segment) {
        const std::string key = segment.Text(key_at, key_width);
        const std::string text = segment.Text(text_at, segment.Size() - text_at);
        if (key == "SAMPLEID") sample = Kept_Text(text, title_width);
        const bool shared = key == "SAMPLEID" || key == "COMMENT" || key == "USER" || key == "SITE";
        facts.Add(key == "SAMPLEID" ? "Sample" : shared ? key.substr(0, 1) + Lower(key.substr(1)) : key, text);
    }

    void Take_Tube(Byte_View segment) {
        lines = {segment.F8(72), segment.F8(80), segment.F8(88), segment.F8(96), segment.F8(104)};
        facts.Add("Anode", segment.Text(116, 4));
        Add_Setting(facts, "Mean K-alpha wavelength (A)", lines.mean);
    }

    void Take_Drive(Byte_View segment) {
        const std::string drive = segment.Text(key_at, key_width);
        if (!drive.empty() && segment.Holds(place_at, sizeof(double))) Add_Told(facts, drive, segment.F8(place_at));
    }
};

// Walks segments as long as they hold together; one of an unknown kind is passed over.
void Take_Segments(std::string_view bytes, Segment_Facts& told) {
    while (bytes.size() >= segment_head) {
        Byte_View head(bytes);
        const std::uint32_t type = head.U4(0), length = head.U4(4);
        if (length < segment_head || length > bytes.size()) return;
        const Byte_View segment(bytes.substr(0, length));
        if (type == text_segment && length >= text_at) told.Take_Text(segment);
        if (type == tube_segment && length >= 120) told.Take_Tube(segment);
        if (type == drive_segment) told.Take_Drive(segment);
        bytes.remove_prefix(length);
    }
}

Segment_Facts Head_Of(Byte_View bytes, std::size_t length) {
    Segment_Facts head;
    const std::string date = bytes.Text(12, 12);
    Take_Segments(bytes.From(first_segment).substr(0, length), head);
    if (date != "01/01/0001") Add_Date(head.facts, date, bytes.Text(24, 10));
    return head;
}

class Reader_400 {
public:
    Reader_400(std::string_view file, std::size_t length) : bytes_(file), head_(Head_Of(bytes_, length)), at_(first_segment + length) {}

    bool At_End() const { return at_ >= bytes_.Size(); }

    Status Next(Diffraction_Pattern_Type& p) {
        Byte_View range(bytes_.From(at_));
        const std::size_t segments = range.U4(140), stride = range.U4(136);
        constexpr std::size_t longest_record = 4096;
        const bool there = range.Holds(0, range_head) && range.Holds(range_head, segments);
        if (!there || stride < sizeof(float) || stride > longest_record) {
            at_ = bytes_.Size();
            return Status::Fail(there ? "The length of its records is none" : range_head_ends);
        }
        const std::string_view records = range.From(range_head + segments);
        const double told = range.U4(88);
        const std::size_t n = Points_There(p, told, records.size(), stride);
        at_ += range_head + segments + n * stride;
        if (n == 0) return Status::Fail(told == 0 ? no_range_points : range_head_ends);
        return Fill(range, segments, records, stride, n, p);
    }

private:
    Status Fill(Byte_View range, std::size_t segments, std::string_view records, std::size_t stride, std::size_t n,
                Diffraction_Pattern_Type& p) const {
        Segment_Facts told = head_;
        const std::string scan = range.Text(32, 24);
        told.facts.Add("Scan axis", scan);
        Add_Setting(told.facts, "Time a step (s)", Seconds_Of(range.F4(92)));
        Add_Setting(told.facts, "Voltage (kV)", range.F4(100));
        Add_Setting(told.facts, "Current (mA)", range.F4(104));
        Add_Setting(told.facts, "Wavelength used (A)", range.F8(112));
        Take_Segments(range.From(range_head).substr(0, segments), told);
        p.facts = told.facts.Done();
        p.title = told.sample;
        told.lines.Give(p, range.F8(112));
        p.count_time = Seconds_Of(range.F4(92));
        const Status status = Set_Points<float>(p, {range.F8(72), range.F8(80)}, records, stride, n);
        if (status.ok()) Set_Scan_Axis(p, To_Utf8(scan));
        return status;
    }

    Byte_View bytes_;
    Segment_Facts head_;
    std::size_t at_;
};

}  // namespace

Status Read_Raw_400(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    Byte_View bytes(file);
    const std::size_t told = bytes.U4(40), length = bytes.U4(56);
    if (!bytes.Whole() || !bytes.Holds(first_segment, length)) return Status::Fail(raw_ends);
    Reader_400 reader(file, length);
    Range_List ranges;
    while ((ranges.Next() <= told && !ranges.Full() && !reader.At_End()) || ranges.Next() == 1) {
        Diffraction_Pattern_Type p;
        const Status status = reader.Next(p);
        ranges.Take(status, std::move(p));
    }
    ranges.End(told);
    return ranges.Done(patterns, notes);
}

}  // namespace vntl
