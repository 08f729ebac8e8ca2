#pragma once
// The program's number conventions: rounding, checked 16-bit integers, reading a
// number from text (Val), number texts and the format masks.
#include <cstdint>
#include <string>
#include <string_view>

namespace osm {

// Largest integer <= x.
double Int(double x);
// Nearest integer, a half to the even neighbour (2.5 -> 2, 3.5 -> 4).
double CInt(double x);
// Rounded half to even into a 16-bit integer; outside -32768..32767 is a fault
// whose text begins with `what`.
int16_t ToInt16(double x, std::string_view what = "value");
int32_t ToInt32(double x, std::string_view what = "value");
// Largest magnitude a single holds; a number beyond it becomes infinite when stored.
constexpr double SingleMax = 3.4028234663852886e38;
// True when x is a finite number that a single holds without becoming infinite.
bool FitsSingle(double x);
// A double rounded to the single precision in which the model stores it.
inline float Sng(double x) { return static_cast<float>(x); }

// The leading number of a text: blanks skipped (also inside the digits), optional
// sign, digits with at most one point, optional exponent. No digit gives 0.
double Val(std::string_view text);
// True when the whole text (blanks around allowed) is one number in that form.
bool IsNumber(std::string_view text);

// `text` cut to at most `limit` characters for a message: a long one keeps its
// start and says how long it was.
std::string Excerpt(std::string_view text, size_t limit = 80);

// Plain text of a number: no leading blank, "-" for negatives, up to 7
// significant digits for a Single and 15 for a Double, trailing zeros dropped,
// exponent form for very large or very small values (1E+20, 1E-10).
std::string NumText(float x);
std::string NumText(double x);
std::string NumText(int x);
// The same with the leading blank of a non-negative number, and no zero before
// the point of a value between -1 and 1: " 3", "-3", " .5".
std::string NumTextLead(float x);
std::string NumTextLead(double x);
std::string NumTextLead(int x);

// A number through a format mask such as "###,###,##0", "0.0", "$#,##0". An
// infinite or NaN value gives its plain text ("INF", "-INF", "NAN").
std::string Format(double x, std::string_view mask);

}  // namespace osm
