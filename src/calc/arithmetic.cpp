#include "calc/arithmetic.hpp"

#include <algorithm>
#include <cmath>

#include "base/edit_descriptor.hpp"
#include "base/free_form.hpp"
#include "base/text_file.hpp"
#include "base/write_file.hpp"
#include "calc/rescale.hpp"

namespace vntl {

namespace {

constexpr float least_efficiency = 0.0001f;

float Factor_Of_Sigma(const Diffraction_Pattern_Type& p, float factor) { return p.sigma_is_variance ? factor * factor : std::fabs(factor); }

}  // namespace

Status Sum_Patterns(Diffraction_Pattern_Type& first, std::span<const Diffraction_Pattern_Type* const> others, Sum_Mode mode) {
    if (others.empty()) return Status::Fail("ERROR: Only one profile selected to make sum/average");
    for (const Diffraction_Pattern_Type* other : others) {
        if (other->npts != first.npts) return Status::Fail("ERROR: The X step size of selected profiles are not equal");
        if (other->x != first.x) return Status::Fail("ERROR: The points of selected profiles are at different positions ");
    }
    for (const Diffraction_Pattern_Type* other : others)
        std::transform(first.y.begin(), first.y.end(), other->y.begin(), first.y.begin(), std::plus<float>());
    if (mode == Sum_Mode::average)
        for (float& y : first.y) y /= static_cast<float>(others.size() + 1);
    Set_Y_Limits(first);
    return Status::Done();
}

Status Subtract_Pattern(Diffraction_Pattern_Type& a, const Diffraction_Pattern_Type& b) {
    if (a.npts != b.npts) return Status::Fail("Size of selected profiles must be the same");
    if (a.x != b.x) return Status::Fail("X arrays of each profiles are diferents");
    std::transform(a.y.begin(), a.y.end(), b.y.begin(), a.y.begin(), std::minus<float>());
    Set_Y_Limits(a);
    return Status::Done();
}

std::vector<float> Line_Through(std::span<const Background_Mark> points, std::span<const float> x) {
    std::vector<float> line;
    if (points.size() < 2) return line;
    line.reserve(x.size());
    std::size_t right = 1;
    for (const float at : x) {
        while (right + 1 < points.size() && points[right].x < at) ++right;
        const Background_Mark &a = points[right - 1], &b = points[right];
        const double width = static_cast<double>(b.x) - a.x;
        const double part = width > 0 ? std::clamp((static_cast<double>(at) - a.x) / width, 0.0, 1.0) : 1.0;
        line.push_back(static_cast<float>(a.y + part * (static_cast<double>(b.y) - a.y)));
    }
    return line;
}

bool Holds_A_Curve(std::span<const float> values) {
    return std::ranges::any_of(values, [](float value) { return value != 0; });
}

Status Subtract_Background(Diffraction_Pattern_Type& pattern, std::span<const float> background) {
    if (pattern.y.size() != background.size()) return Status::Fail("The background has not a value for each point");
    std::vector<float>* const curves[] = {&pattern.y, &pattern.ycalc, &pattern.bgr};
    std::vector<std::vector<float>> less;
    for (const std::vector<float>* curve : curves) {
        std::vector<float>& values = less.emplace_back(*curve);
        if (curve != &pattern.y && !Holds_A_Curve(values)) continue;
        for (std::size_t i = 0; i < std::min(values.size(), background.size()); ++i) {
            const bool finite = std::isfinite(values[i]);
            values[i] -= background[i];
            if (finite && !std::isfinite(values[i])) return Status::Fail("Values would leave the range of numbers");
        }
    }
    for (std::size_t i = 0; i < std::size(curves); ++i) *curves[i] = std::move(less[i]);
    Set_Y_Limits(pattern);
    return Status::Done();
}

void Shift_And_Multiply(Diffraction_Pattern_Type& p, PRF_Info_Add_Type& info, float shift, float factor) {
    Scale_X_Of_Row(p, info, 1, shift);
    Scale_Y_Of_Row(p, factor, 0);
    for (float& sigma : p.sigma) sigma *= Factor_Of_Sigma(p, factor);
}

bool Can_Shift_And_Multiply(const Diffraction_Pattern_Type& p, float shift, float factor) {
    const auto stays = [of_sigma = Factor_Of_Sigma(p, factor)](float sigma) {
        return std::isfinite(sigma * of_sigma) || !std::isfinite(sigma);
    };
    return Stays_Finite_X(p, 1, shift) && Stays_Finite_Y(p, factor, 0) && std::ranges::all_of(p.sigma, stays) &&
           (p.x.size() < 2 || p.x.front() + shift < p.x.back() + shift);
}

Status Write_Efficiency_File(const std::string& path, std::span<const Efficiency_Line> lines) {
    const Edit_Format columns("(I5,2F14.5)");
    std::string text;
    for (const Efficiency_Line& line : lines)
        if (Status status = Write_Record(text, columns, line.point, line.shift, line.efficiency); status.failed) return status;
    return Replace_File(path, text) ? Status::Done() : Status::Fail_File("The file cannot be written: " + path);
}

Status Read_Efficiency_File(const std::string& path, int n, Efficiency& efficiency) {
    Text_File file;
    if (file.Open(path).failed) return Status::Fail_File("ERROR opening the file " + path);
    Efficiency read;
    read.shift.assign(static_cast<std::size_t>(n), 0);
    read.efficiency.assign(static_cast<std::size_t>(n), 1);
    Free_Form_Reader reader(file.Text());
    for (int taken = 0; taken < n; ++taken) {
        int point = 0;
        float shift = 0, value = 1;
        const long line = reader.Line_Number();
        if (!reader.Read(point, shift, value) || reader.given() == 0) break;
        const std::string place = "ERROR in the file " + path + "\nline " + std::to_string(line) + ": ";
        if (point < 1 || point > n)
            return Status::Fail_File(place + "point " + std::to_string(point) + " lies outside 1 to " + std::to_string(n));
        if (!std::isfinite(shift)) return Status::Fail_File(place + "the shift is no finite number");
        const auto i = static_cast<std::size_t>(point - 1);
        read.shift[i] = shift;
        read.efficiency[i] = value >= least_efficiency ? value : 1;
    }
    efficiency = std::move(read);
    return Status::Done();
}

void Apply_Efficiency(Diffraction_Pattern_Type& p, const Efficiency& efficiency) {
    const std::size_t n = std::min({p.x.size(), p.y.size(), efficiency.shift.size()});
    for (std::size_t i = 0; i < n; ++i) {
        p.x[i] += efficiency.shift[i];
        p.y[i] /= efficiency.efficiency[i];
    }
    if (n == 0) return;
    p.xmin += efficiency.shift[0];
    p.xmax += efficiency.shift[n - 1];
    Set_Y_Limits(p);
}

}  // namespace vntl
