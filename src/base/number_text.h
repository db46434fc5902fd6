// Every number form of the workbench, free of any locale: decimal point ".", digits 0-9.
//
// A float is shown with up to 7 significant digits, a double with up to 15. Values that are not finite
// give "(Error)" in every form.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quom {

// Half-to-even rounding to a whole number; the only conversion to integers in the workbench.
double round_half_even(double x);
// Half-to-even rounding to 16 bits; 0 for a value outside -32768..32767 or not finite.
std::int16_t to_i16(double x);
// Half-to-even rounding to 32 bits; 0 for a value outside the range or not finite.
std::int32_t to_i32(double x);

// The longest leading number of a text ("E" or "D" exponent, blanks skipped); 0 when there is none or
// when it is too large for a double.
double Val(std::string_view text);

// The same number when the whole text is one, blanks around it aside; none otherwise.
std::optional<double> read_number(std::string_view text);

// The short form: "-" or one leading blank, digits, no zero before the point: " .5", "-5", " 1E+07".
std::string strNum(double x);
std::string strNum(float x);
inline std::string strNum(int x) { return strNum(static_cast<double>(x)); }

// The printed form of text files: the short form and one trailing blank.
std::string printNum(double x);
std::string printNum(float x);
inline std::string printNum(int x) { return printNum(static_cast<double>(x)); }

// The written form of free-format files: the short form without blanks; a bool is -1 or 0.
std::string writeNum(double x);
std::string writeNum(float x);
inline std::string writeNum(int x) { return writeNum(static_cast<double>(x)); }
inline std::string writeNum(bool x) { return x ? "-1" : "0"; }

// The general form of lists and boxes: no blanks, a zero before a leading point: "0.5", "-0.5".
std::string genNum(double x);
std::string genNum(float x);
inline std::string genNum(int x) { return genNum(static_cast<double>(x)); }
// ... with up to so many significant digits, 1 to 15.
std::string genNum(double x, int digits);

// The short and the general form of a double as the float it is stored as, with up to 7 digits; a number
// beyond the range of floats is shown all the same.
std::string strSingle(double x);
std::string genSingle(double x);

// Form by a mask: "0" digit always shown, "#" digit shown when significant, "." always printed, up to three
// sections separated by ";" (positive and zero, negative, zero), exponent masks as "0.0000E+00".
// Characters before and behind the digits of a section are printed as they stand; "%" has no meaning of its
// own. Rounds half away from zero on the 15-digit decimal value.
std::string formatMask(double x, std::string_view mask);

// The form of tables whose digits are chosen: rounded to 1 to 15 significant digits, no zeros at the end;
// plain where the rounded |x| is 0 or from 1E-03 to below 1E+06, else with an exponent: "-0.0345",
// "8.633932E-04".
std::string digitsNum(double x, int digits);

// Shortest text that reads back as the same double, for programs (JSON, CSV of the console).
std::string exactNum(double x);

}  // namespace quom
