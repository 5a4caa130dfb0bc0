// Numbers out of text, as files of Fortran programs write them: "1", "1.", ".5", "+1.5", "1e5", "1.5D+03", "1.5+3" (an exponent
// without its letter), "nan", "inf", "infinity".
//
// The result is the nearest number of the precision asked for, the same bits as std::from_chars gives, in a few nanoseconds for
// what files hold: short mantissas and small powers of ten. A magnitude above the range gives infinity, one below it zero.
// Nothing here skips blanks.
#pragma once

namespace vntl {

// Reads the longest number at the front of [first, last). Returns its end, or `first` with `value` unchanged when there is none.
// An exponent letter or sign without digits behind it does not belong to the number.
const char* Parse_Float(const char* first, const char* last, float& value);
const char* Parse_Double(const char* first, const char* last, double& value);

// Reads digits with an optional sign at `cursor` and moves it behind them. False, and nothing changed, without a digit or when the
// number does not fit.
bool Parse_Int(const char*& cursor, const char* last, int& value);
bool Parse_Int(const char*& cursor, const char* last, long long& value);

// The number nearest to digits * 10^exponent10. The whole digits stand in [first, last), a decimal point among them is passed over.
float Float_From_Digits(const char* first, const char* last, long long exponent10, bool negative);
double Double_From_Digits(const char* first, const char* last, long long exponent10, bool negative);

}  // namespace vntl
