// What the readers of laboratories' text files share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// Fails for a text of two bytes a character, as some systems export it: none of its words or numbers would be found.
Status Refuse_Wide_Text(std::string_view text);

// A file's text without the mark in front of it, and the bytes that fill it up behind.
std::string_view Filled_Part(std::string_view bytes);

// A text of a head in UTF-8. Of one in Shift-JIS, as Japanese instruments write it, what is plain ASCII stays. A byte above that which
// stands alone is a letter of Latin-1, unless others tell of Shift-JIS.
std::string Readable(std::string_view bytes);

// The English part of a name in two languages, "Japanese|English", as Readable has it.
std::string English_Part(std::string_view bytes);

// A head's number without the zeros that tell nothing: "40" for "40.0000000000". Any other text as it stands.
std::string Without_Idle_Zeros(std::string_view text);

// Seconds a step from the speed of a scan: `unit` says degrees a minute or a second, and is seconds a step otherwise. 0 where nothing is
// told.
float Time_A_Step(double speed, std::string_view unit, double step);

// xmin, xmax and the mean step of points whose x the file tells (or the `step` that is there, where it is about that), and whether they are
// evenly spaced within its digits.
void Set_Steps(Diffraction_Pattern_Type& pattern);

// Variances of counts |y|, and of counts a second |y| over the time of a step (1 s where none is told).
void Set_Lab_Variances(Diffraction_Pattern_Type& pattern);

// The titles of several ranges end with their numbers, which `bank` holds. A single one of a file of one is none of several: its bank
// becomes 0.
void Number_Ranges(std::vector<Diffraction_Pattern_Type>& patterns, std::size_t ranges_in_file);

// Makes y the intensities of a pattern, and x its positions (0 at first where there are none of them), with room for variances. Fails where
// there are no points, or more than a pattern has.
Status Take_Points(Diffraction_Pattern_Type& pattern, std::vector<float>&& y, std::vector<float>&& x = {});

// Whether the text stops right behind this line or word, without a line end: what stands there may be the first half of it.
bool Is_Last_And_Open(std::string_view text, std::string_view part);

}  // namespace vntl
