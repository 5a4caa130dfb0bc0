// Writing of columns of x, intensity and standard deviation under a head of six lines, which the reader of such columns knows again.
//
//   XYDATA
//   TITLE: Si standard
//   ! File saved from Vantrelo-2006
//   ! File name: si.xys
//   ! Scattering variable: 2theta
//        2theta(degrees)     Intensity     Sigma
//          10.0000          104.0000         10.1980     (F14.4,2X,2F16.4)
//
// x has more decimals where four would make neighbours alike; a number that its columns cannot hold has an exponent.
#pragma once

#include <string>
#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

inline constexpr std::string_view xys_mark = "! File saved from Vantrelo-2006";  // on the third line
inline constexpr std::string_view xys_columns = "Intensity     Sigma";           // behind the legend of x

struct Xys_Choice {
    float xmin = 0, xmax = 0;   // points written, both ends included
    float slope = 0, at_0 = 0;  // of a line that is taken off the intensities
};

// The file's text; `file_name` is the name that stands in it. A pattern without uncertainties has zeros in their column.
std::string Xys_Text(const Diffraction_Pattern_Type& pattern, const Xys_Choice& choice, std::string_view file_name);

}  // namespace vntl
