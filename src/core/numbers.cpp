#include "core/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/fault.h"

namespace osm {

double Int(double x) { return std::floor(x); }

double CInt(double x) { return std::nearbyint(x); }

bool FitsSingle(double x) { return std::isfinite(x) && std::fabs(x) <= SingleMax; }

std::string Excerpt(std::string_view text, size_t limit) {
    if (text.size() <= limit) return std::string(text);
    return std::string(text.substr(0, limit)) + "... (" + std::to_string(text.size()) + " characters)";
}

int16_t ToInt16(double x, std::string_view what) {
    const double r = CInt(x);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw Fault(std::string(what) + ": " + NumText(x) +
                    " does not fit a 16-bit integer (-32768..32767)");
    return static_cast<int16_t>(r);
}

int32_t ToInt32(double x, std::string_view what) {
    const double r = CInt(x);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw Fault(std::string(what) + ": " + NumText(x) + " does not fit a 32-bit integer");
    return static_cast<int32_t>(r);
}

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The longest numeric prefix, blanks inside skipped; returns the characters taken.
std::string numericPrefix(std::string_view text, size_t& used) {
    size_t i = 0;
    while (i < text.size() && isBlank(text[i])) ++i;
    std::string out;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) out += text[i++];
    bool point = false, digits = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (isBlank(c)) continue;
        if (isDigit(c)) { out += c; digits = true; }
        else if (c == '.' && !point) { out += c; point = true; }
        else break;
    }
    if (digits && i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
        size_t j = i + 1;
        std::string exp = "E";
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) exp += text[j++];
        bool expDigits = false;
        while (j < text.size() && isDigit(text[j])) { exp += text[j++]; expDigits = true; }
        if (expDigits) { out += exp; i = j; }
    }
    used = i;
    return digits ? out : std::string();
}

std::string trimZeros(std::string s) {
    // Drop the trailing zeros of a fraction (never of an exponent).
    const size_t e = s.find('E');
    std::string mant = e == std::string::npos ? s : s.substr(0, e);
    const std::string exp = e == std::string::npos ? "" : s.substr(e);
    if (mant.find('.') != std::string::npos) {
        while (!mant.empty() && mant.back() == '0') mant.pop_back();
        if (!mant.empty() && mant.back() == '.') mant.pop_back();
    }
    return mant + exp;
}

std::string gText(double x, int digits) {
    if (x == 0.0) return "0";
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*G", digits, x);
    std::string s = trimZeros(buf);
    // Two-digit exponents as written by the program: 1E+20, 1E-05.
    return s;
}

std::string withLead(std::string s, bool negative) {
    // " 0.5" -> " .5", "-0.5" -> "-.5"
    if (s.rfind(negative ? "-0." : "0.", 0) == 0) s = (negative ? "-" : "") + s.substr(negative ? 2 : 1);
    return negative ? s : " " + s;
}

}  // namespace

double Val(std::string_view text) {
    size_t used = 0;
    const std::string num = numericPrefix(text, used);
    if (num.empty()) return 0.0;
    return std::strtod(num.c_str(), nullptr);
}

bool IsNumber(std::string_view text) {
    size_t b = 0, e = text.size();
    while (b < e && isBlank(text[b])) ++b;
    while (e > b && isBlank(text[e - 1])) --e;
    const std::string_view t = text.substr(b, e - b);
    if (t.empty()) return false;
    for (char c : t)
        if (isBlank(c)) return false;
    size_t used = 0;
    return !numericPrefix(t, used).empty() && used == t.size();
}

std::string NumText(float x) { return gText(static_cast<double>(x), 7); }
std::string NumText(double x) { return gText(x, 15); }
std::string NumText(int x) { return std::to_string(x); }
std::string NumTextLead(float x) { return withLead(NumText(x), x < 0); }
std::string NumTextLead(double x) { return withLead(NumText(x), x < 0); }
std::string NumTextLead(int x) { return withLead(NumText(x), x < 0); }

namespace {

struct Mask {
    std::string prefix, suffix;
    int minInt = 0;       // '0' places before the point
    bool group = false;   // ',' among the integer places
    bool point = false;
    int fixedDec = 0;     // '0' places after the point
    int optDec = 0;       // '#' places after the point
};

Mask parseMask(std::string_view mask) {
    Mask m;
    size_t first = mask.find_first_of("0#.");
    size_t last = mask.find_last_of("0#.");
    if (first == std::string_view::npos) {
        m.prefix = std::string(mask);
        return m;
    }
    m.prefix = std::string(mask.substr(0, first));
    m.suffix = std::string(mask.substr(last + 1));
    bool afterPoint = false;
    for (size_t i = first; i <= last; ++i) {
        const char c = mask[i];
        if (c == '.') afterPoint = m.point = true;
        else if (c == ',' && !afterPoint) m.group = true;
        else if (c == '0') (afterPoint ? m.fixedDec : m.minInt)++;
        else if (c == '#' && afterPoint) m.optDec++;
    }
    return m;
}

// |x| rounded half away from zero at `decimals` places, on its 15-digit decimal
// form; gives the integer digits and the fraction digits.
void roundDecimal(double x, int decimals, std::string& intPart, std::string& frac) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(x));
    std::string digits;
    for (const char* p = buf; *p && *p != 'e'; ++p)
        if (isDigit(*p)) digits += *p;
    const int exp = std::atoi(std::strchr(buf, 'e') + 1);
    int pointPos = exp + 1;  // digits before the decimal point
    if (x == 0.0) { digits = "0"; pointPos = 1; }
    const int keep = pointPos + decimals;
    if (keep < 0) {
        digits = "0";
        pointPos = 1;
    } else if (keep < static_cast<int>(digits.size())) {
        const bool up = digits[keep] >= '5';
        digits.resize(keep);
        if (up) {
            int i = keep - 1;
            while (i >= 0 && digits[i] == '9') digits[i--] = '0';
            if (i >= 0) digits[i]++;
            else { digits = "1" + digits; ++pointPos; }
        }
    }
    // Place the digits around the point.
    std::string full = digits;
    if (pointPos <= 0) { full = std::string(-pointPos, '0') + full; pointPos = 0; }
    while (static_cast<int>(full.size()) < pointPos + decimals) full += '0';
    intPart = full.substr(0, pointPos);
    frac = full.substr(pointPos, decimals);
    intPart.erase(0, std::min(intPart.find_first_not_of('0'), intPart.size() - 1));
    if (intPart == "0") intPart.clear();
}

std::string groupThousands(const std::string& digits) {
    std::string out;
    for (size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) out += ',';
        out += digits[i];
    }
    return out;
}

}  // namespace

std::string Format(double x, std::string_view maskText) {
    // No mask has room for a value that is not a number: it shows as NumText does.
    if (!std::isfinite(x)) return NumText(x);
    const Mask m = parseMask(maskText);
    std::string intPart, frac;
    roundDecimal(x, m.fixedDec + m.optDec, intPart, frac);
    while (static_cast<int>(frac.size()) > m.fixedDec && frac.back() == '0') frac.pop_back();
    if (static_cast<int>(intPart.size()) < m.minInt)
        intPart = std::string(static_cast<size_t>(m.minInt) - intPart.size(), '0') + intPart;
    if (m.group) intPart = groupThousands(intPart);
    std::string body = intPart;
    if (m.point) body += "." + frac;
    const bool zero = intPart.find_first_not_of("0,") == std::string::npos &&
                      frac.find_first_not_of('0') == std::string::npos;
    const std::string sign = (x < 0 && !zero) ? "-" : "";
    return sign + m.prefix + body + m.suffix;
}

}  // namespace osm
