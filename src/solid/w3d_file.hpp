// The file of a solid, .w3d: a text, a word and its numbers a line.
//
//   w3d 1                                    the first line: name and version of the format
//   material 6 192 212 30                    its number, red, green, blue (0 to 255); those that are not told are black
//   eye 13.065629 7.6536694 -13.065629       from where the solid is seen; it looks at the origin
//   light 8.485281 8.485281 0                from where it is lit
//   mode gouraud                             wireframe, hidden_lines, unlit, flat, gouraud or phong
//   background 192 192 192
//   edges 0 0 0                              colour of the lines between facets
//   v -1.5 0.25 -1                           a vertex: to the right, upward, away; "gap" as the second one where there is no surface
//   sheet 1 1000 500 1                       number of its first vertex, columns, rows, material
//   rod -1.5 -0.8 -1 1.5 -0.8 -1 0.025 0.005 20 8 6
//                                            from, to, radius at either end, sections, sides, material
//   text 102 0 -0.8 -1.4 1 0 0 0 0 1 0.05 0.12 0.08 6 "2θ"
//                                            font, middle of the base line, directions of the line and of its letters (at a right angle, of
//                                            length 1), width, height and depth of a letter, material; in the text stand \" \\ \n \r
//   end                                      the last line: without it something is missing
//
// Numbers are separated by blanks or tabs. Empty lines and those that begin with # say nothing. Vertices count from 1. A sheet's vertices
// stand before it, row by row, and belong to no other sheet; columns and rows rise or fall from one to the next. What is told twice holds
// as told last.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

std::string W3d_Text_Of(const W3d& solid, const W3d_View& view);

// A failure names the file and the line and changes nothing. Memory follows the file: no number in it reserves any.
Status Read_W3d(const std::string& file, W3d& solid, W3d_View& view);
Status Read_W3d_Text(std::string_view text, W3d& solid, W3d_View& view);  // names the line alone

}  // namespace vntl
