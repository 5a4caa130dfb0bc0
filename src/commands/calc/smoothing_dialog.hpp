// Menu "Smoothing": the five-point polynomial and the Fourier filter, on the first row or on all.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Smoothing_Dialog_Resource();

// Cancelled when the user left the dialog. Rows that are passed over are told in boxes.
Status Smooth_Polynomial(Session&, Ask&);
Status Smooth_Fourier(Session&, Ask&);

}  // namespace vntl
