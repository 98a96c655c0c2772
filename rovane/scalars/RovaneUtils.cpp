// Number text and quick sorts. Every algorithm is written once as a template
// over the float type or the complex record; the named entries below are thin
// wrappers around it.
#include "rovane/scalars/RovaneUtils.h"

#include "rovane/scalars/QuickSort.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <stdexcept>
#include <vector>

namespace rovane {

// ---------------------------------------------------------------------------
// Separators
// ---------------------------------------------------------------------------
char GetDecimalSeparator() {
    const std::lconv* lc = std::localeconv();
    return (lc && lc->decimal_point && lc->decimal_point[0]) ? lc->decimal_point[0] : '.';
}

char GetThousandSeparator() {
    const std::lconv* lc = std::localeconv();
    if (lc && lc->thousands_sep && lc->thousands_sep[0]) return lc->thousands_sep[0];
    return GetDecimalSeparator() == ',' ? '.' : ',';
}

namespace {

// ---------------------------------------------------------------------------
// Float-type traits of the text routines.
// ---------------------------------------------------------------------------
template <class F>
struct TextTraits;
template <>
struct TextTraits<double> {
    static constexpr int MaxPrecision = 17;
    static double NaN() { return NAN_; }
    static double Inf() { return INF; }
};
template <>
struct TextTraits<float> {
    static constexpr int MaxPrecision = 9;
    static float NaN() { return NAN_SINGLE; }
    static float Inf() { return INF_SINGLE; }
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f'; }

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Scientific digits of a finite, non-negative value: `sig` significant digits
// (correctly rounded) and the decimal exponent of the first one.
template <class F>
void SciDigits(F v, int sig, std::string& digits, int& exponent) {
    std::vector<char> buf(static_cast<size_t>(sig) + 32);
    auto r = std::to_chars(buf.data(), buf.data() + buf.size(), v, std::chars_format::scientific, sig - 1);
    digits.clear();
    const char* p = buf.data();
    for (; p < r.ptr && *p != 'e'; ++p)
        if (IsDigit(*p)) digits.push_back(*p);
    exponent = 0;
    if (p < r.ptr) std::from_chars(p + 1 + (p[1] == '+'), r.ptr, exponent);
}

// Integer and fraction digits of a finite, non-negative value in fixed
// notation with `frac` fraction digits.
template <class F>
void FixedDigits(F v, int frac, std::string& intPart, std::string& fracPart) {
    std::vector<char> buf(static_cast<size_t>(frac) + 400);
    auto r = std::to_chars(buf.data(), buf.data() + buf.size(), v, std::chars_format::fixed, frac);
    std::string_view t(buf.data(), static_cast<size_t>(r.ptr - buf.data()));
    const size_t dot = t.find('.');
    intPart.assign(t.substr(0, dot));
    fracPart.assign(dot == std::string_view::npos ? std::string_view() : t.substr(dot + 1));
}

void AppendExponent(std::string& out, int e, int minDigits) {
    std::string d = std::to_string(e < 0 ? -e : e);
    if (static_cast<int>(d.size()) < minDigits) out.append(static_cast<size_t>(minDigits) - d.size(), '0');
    out += d;
}

// ---------------------------------------------------------------------------
// General form
// ---------------------------------------------------------------------------
template <class F>
std::string GeneralText(F x, int32_t precision, int32_t expDigits) {
    if (std::isnan(x)) return "NAN";
    if (std::isinf(x)) return x > 0 ? "INF" : "-INF";
    if (x == 0) return "0";
    const int prec = std::clamp<int>(precision, 1, TextTraits<F>::MaxPrecision);
    const int minExp = std::clamp<int>(expDigits, 0, 4);
    std::string digits;
    int e = 0;
    SciDigits<F>(std::fabs(x), prec, digits, e);
    while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
    const char sep = GetDecimalSeparator();
    std::string out;
    if (x < 0) out.push_back('-');
    if (e >= -5 && e < prec) {
        if (e >= 0) {
            const size_t n = static_cast<size_t>(e) + 1;
            if (digits.size() < n) digits.append(n - digits.size(), '0');
            out.append(digits, 0, n);
            if (digits.size() > n) {
                out.push_back(sep);
                out.append(digits, n, std::string::npos);
            }
        } else {
            out.push_back('0');
            out.push_back(sep);
            out.append(static_cast<size_t>(-e - 1), '0');
            out += digits;
        }
    } else {
        out.push_back(digits[0]);
        if (digits.size() > 1) {
            out.push_back(sep);
            out.append(digits, 1, std::string::npos);
        }
        out.push_back('E');
        if (e < 0) out.push_back('-');
        AppendExponent(out, e, minExp);
    }
    return out;
}

// ---------------------------------------------------------------------------
// Format texts
// ---------------------------------------------------------------------------
struct FmtToken {
    enum Kind { Digit, Point, Exponent, Literal } kind;
    explicit FmtToken(Kind k, std::string_view t = {}) : kind(k), text(t) {}
    bool zero = false;       // Digit: '0' rather than '#'
    bool fraction = false;   // Digit: after the point
    char expChar = 'E';      // Exponent
    bool expPlus = false;    // Exponent: E+ writes '+'
    int expDigits = 0;       // Exponent: least digit count
    std::string text;        // Literal
};

struct FmtSection {
    std::vector<FmtToken> tokens;
    int intPh = 0, intForced = 0, fracPh = 0, fracForced = 0;
    bool group = false;
    bool sci = false;
};

FmtSection ParseSection(std::string_view s) {
    FmtSection sec;
    bool seenPoint = false;
    int firstIntZero = -1;
    auto literal = [&](std::string_view t) {
        if (!sec.tokens.empty() && sec.tokens.back().kind == FmtToken::Literal)
            sec.tokens.back().text += t;
        else
            sec.tokens.emplace_back(FmtToken::Literal, t);
    };
    for (size_t i = 0; i < s.size(); ++i) {
        const char c = s[i];
        if (c == '\'' || c == '"') {
            size_t close = s.find(c, i + 1);
            if (close == std::string_view::npos) close = s.size();
            literal(s.substr(i + 1, close - i - 1));
            i = close;
        } else if ((c == '0' || c == '#') && !sec.sci) {
            FmtToken t(FmtToken::Digit);
            t.zero = c == '0';
            t.fraction = seenPoint;
            if (seenPoint) {
                ++sec.fracPh;
                if (t.zero) sec.fracForced = sec.fracPh;
            } else {
                if (t.zero && firstIntZero < 0) firstIntZero = sec.intPh;
                ++sec.intPh;
            }
            sec.tokens.push_back(t);
        } else if (c == '.' && !seenPoint && !sec.sci) {
            seenPoint = true;
            sec.tokens.emplace_back(FmtToken::Point);
        } else if (c == ',' && !sec.sci) {
            sec.group = true;
        } else if ((c == 'E' || c == 'e') && !sec.sci && i + 1 < s.size() && (s[i + 1] == '+' || s[i + 1] == '-')) {
            FmtToken t(FmtToken::Exponent);
            t.expChar = c;
            t.expPlus = s[i + 1] == '+';
            size_t j = i + 2;
            while (j < s.size() && s[j] == '0') ++j;
            t.expDigits = std::min<int>(static_cast<int>(j - i - 2), 4);
            sec.sci = true;
            sec.tokens.push_back(t);
            i = j - 1;
        } else {
            literal(s.substr(i, 1));
        }
    }
    sec.intForced = firstIntZero < 0 ? 0 : sec.intPh - firstIntZero;
    return sec;
}

// Splits a format text at ';' outside quotes.
std::vector<std::string_view> SplitSections(std::string_view f) {
    std::vector<std::string_view> out;
    size_t start = 0;
    char quote = 0;
    for (size_t i = 0; i < f.size(); ++i) {
        const char c = f[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == ';') {
            out.push_back(f.substr(start, i - start));
            start = i + 1;
        }
    }
    out.push_back(f.substr(start));
    return out;
}

// Renders the non-negative value v (or the word, for a non-finite value) by
// one section. `isZero` reports whether the written digits are all zero.
template <class F>
std::string RenderSection(const FmtSection& sec, F v, std::string_view word, bool& isZero) {
    std::string intStr, fracStr;
    int dispExp = 0;
    if (word.empty()) {
        if (sec.sci) {
            int intDigits = sec.intPh;
            int sig = sec.intPh + sec.fracPh;
            if (sig == 0) sig = intDigits = 1;
            if (v == 0) {
                fracStr.assign(static_cast<size_t>(sig - intDigits), '0');
            } else {
                std::string d;
                int e = 0;
                SciDigits<F>(v, sig, d, e);
                intStr = d.substr(0, static_cast<size_t>(intDigits));
                fracStr = d.substr(static_cast<size_t>(intDigits));
                dispExp = e - (intDigits - 1);
            }
        } else {
            FixedDigits<F>(v, sec.fracPh, intStr, fracStr);
            const size_t nz = intStr.find_first_not_of('0');
            intStr.erase(0, nz == std::string::npos ? intStr.size() : nz);
        }
        while (static_cast<int>(fracStr.size()) > sec.fracForced && fracStr.back() == '0') fracStr.pop_back();
        if (static_cast<int>(intStr.size()) < sec.intForced)
            intStr.insert(0, static_cast<size_t>(sec.intForced) - intStr.size(), '0');
        isZero = intStr.find_first_not_of('0') == std::string::npos &&
                 fracStr.find_first_not_of('0') == std::string::npos;
    } else {
        isZero = false;
    }

    const char sep = GetDecimalSeparator();
    const char thou = GetThousandSeparator();
    const int L = static_cast<int>(intStr.size());
    const int P = sec.intPh;
    std::string out;
    int intSeen = 0, fracSeen = 0;
    bool numberStarted = false;
    auto emitInt = [&](int from, int to) {  // digits [from, to) of intStr
        for (int g = from; g < to; ++g) {
            if (sec.group && g > 0 && (L - g) % 3 == 0) out.push_back(thou);
            out.push_back(intStr[static_cast<size_t>(g)]);
        }
    };
    auto startNumber = [&]() {
        if (numberStarted) return false;
        numberStarted = true;
        if (!word.empty()) {
            out += word;
            return true;
        }
        if (P == 0) emitInt(0, L);  // no integer placeholder: digits go before the rest
        return false;
    };
    for (const FmtToken& t : sec.tokens) {
        if (t.kind == FmtToken::Literal) {
            out += t.text;
            continue;
        }
        if (startNumber() || !word.empty()) continue;
        switch (t.kind) {
            case FmtToken::Digit:
                if (!t.fraction) {
                    const int pos = L - P + intSeen;
                    if (intSeen == 0 && pos > 0) emitInt(0, pos);
                    if (pos >= 0) emitInt(pos, pos + 1);
                    ++intSeen;
                } else {
                    if (fracSeen < static_cast<int>(fracStr.size())) out.push_back(fracStr[static_cast<size_t>(fracSeen)]);
                    ++fracSeen;
                }
                break;
            case FmtToken::Point:
                if (!fracStr.empty()) out.push_back(sep);
                break;
            case FmtToken::Exponent:
                out.push_back(t.expChar);
                if (dispExp < 0)
                    out.push_back('-');
                else if (t.expPlus)
                    out.push_back('+');
                AppendExponent(out, dispExp, std::max(t.expDigits, 1));
                break;
            default:
                break;
        }
    }
    return out;
}

template <class F>
std::string FormatValue(std::string_view format, F x) {
    const std::vector<std::string_view> parts = SplitSections(format);
    const FmtSection pos = ParseSection(parts[0]);
    const bool hasNeg = parts.size() > 1 && !parts[1].empty();
    const bool hasZero = parts.size() > 2 && !parts[2].empty();
    bool zero = false;
    if (std::isnan(x)) return RenderSection<F>(pos, 0, "NAN", zero);
    if (std::isinf(x)) {
        if (x > 0) return RenderSection<F>(pos, 0, "INF", zero);
        if (hasNeg) return RenderSection<F>(ParseSection(parts[1]), 0, "INF", zero);
        return "-" + RenderSection<F>(pos, 0, "INF", zero);
    }
    const bool negative = x < 0;
    const bool useNeg = negative && hasNeg;
    std::string text = RenderSection<F>(useNeg ? ParseSection(parts[1]) : pos, std::fabs(x), {}, zero);
    if (zero) {
        if (hasZero) return RenderSection<F>(ParseSection(parts[2]), 0, {}, zero);
        if (negative) return RenderSection<F>(pos, 0, {}, zero);
        return text;
    }
    return negative && !useNeg ? "-" + text : text;
}

template <class C>
std::string CplxText(const C& z, int32_t precision, int32_t digits) {
    using F = ComplexField<C>;
    auto text = [&](F v) { return GeneralText<F>(v, precision, digits); };
    if (z.Im == 0) return text(z.Re);
    if (z.Re == 0) return text(z.Im) + "i";
    if (z.Im == 1) return text(z.Re) + " + i";
    if (z.Im == -1) return text(z.Re) + " - i";
    return text(z.Re) + (z.Im < 0 ? " - " : " + ") + text(std::fabs(z.Im)) + "i";
}

template <class C>
std::string CplxFormatted(const C& z, std::string_view reFormat, std::string_view imFormat, int32_t precision) {
    using F = ComplexField<C>;
    if (reFormat.empty() || imFormat.empty()) return CplxText(z, precision, 0);
    if (z.Im == 0) return FormatValue<F>(reFormat, z.Re);
    if (z.Re == 0) return FormatValue<F>(imFormat, z.Im);
    return FormatValue<F>(reFormat, z.Re) + FormatValue<F>(imFormat, z.Im);
}

// ---------------------------------------------------------------------------
// Text to number
// ---------------------------------------------------------------------------
[[noreturn]] void RaiseNotValid(std::string_view s, const char* what) {
    throw std::invalid_argument("'" + std::string(s) + "' is not a valid " + what + " value");
}

locale_t CLocale() {
    static const locale_t loc = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return loc;
}

// Checks [sign] digits [sep digits] [e [sign] digits] and rewrites it with '.'
// as the separator, for the C-locale conversion.
bool NormalizeFloatText(std::string_view s, std::string& out) {
    const char sep = GetDecimalSeparator();
    size_t i = 0;
    out.clear();
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) out.push_back(s[i++]);
    size_t mantissaDigits = 0;
    while (i < s.size() && IsDigit(s[i])) out.push_back(s[i++]), ++mantissaDigits;
    if (i < s.size() && s[i] == sep) {
        out.push_back('.');
        ++i;
        while (i < s.size() && IsDigit(s[i])) out.push_back(s[i++]), ++mantissaDigits;
    }
    if (mantissaDigits == 0) return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        out.push_back('e');
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) out.push_back(s[i++]);
        size_t expDigits = 0;
        while (i < s.size() && IsDigit(s[i])) out.push_back(s[i++]), ++expDigits;
        if (expDigits == 0) return false;
    }
    return i == s.size();
}

template <class F>
F ParseFloat(std::string_view s) {
    std::string t;
    if (!NormalizeFloatText(Trim(s), t)) RaiseNotValid(s, "floating point");
    if constexpr (std::is_same_v<F, float>)
        return strtof_l(t.c_str(), nullptr, CLocale());
    else
        return strtod_l(t.c_str(), nullptr, CLocale());
}

template <class F>
F TextToValue(std::string_view s) {
    if (s.size() > 2) {
        if ((s[1] == 'A' || s[2] == 'A') && s.find("NAN") != std::string_view::npos) return TextTraits<F>::NaN();
        if ((s[0] == 'I' || s[1] == 'I') && s.find("INF") != std::string_view::npos)
            return s.find('-') != std::string_view::npos ? -TextTraits<F>::Inf() : TextTraits<F>::Inf();
    }
    return ParseFloat<F>(s);
}

template <class C>
C TextToCplx(std::string_view s) {
    using F = ComplexField<C>;
    C z(0, 0);
    try {
        const size_t ip = s.find('i');
        if (ip == std::string_view::npos) {
            z.Re = TextToValue<F>(s);
            return z;
        }
        if (!Trim(s.substr(ip + 1)).empty()) RaiseNotValid(s, "complex");
        ptrdiff_t signPos = -1;
        for (ptrdiff_t k = static_cast<ptrdiff_t>(ip) - 1; k >= 0; --k) {
            const char c = s[static_cast<size_t>(k)];
            if (c != '+' && c != '-') continue;
            if (k > 0 && (s[static_cast<size_t>(k - 1)] == 'e' || s[static_cast<size_t>(k - 1)] == 'E')) continue;
            signPos = k;
            break;
        }
        const size_t imStart = static_cast<size_t>(signPos + 1);
        const std::string_view imText = Trim(s.substr(imStart, ip - imStart));
        F im = imText.empty() ? F(1) : TextToValue<F>(imText);
        if (signPos >= 0 && s[static_cast<size_t>(signPos)] == '-') im = -im;
        if (signPos > 0) {
            const std::string_view reText = s.substr(0, static_cast<size_t>(signPos));
            if (!Trim(reText).empty()) z.Re = TextToValue<F>(reText);
        }
        z.Im = im;
    } catch (const std::invalid_argument&) {
        RaiseNotValid(s, "complex");
    }
    return z;
}

int32_t TextToInteger(std::string_view s) {
    std::string_view t = Trim(s);
    if (!t.empty() && t.front() == '+') t.remove_prefix(1);
    int32_t v = 0;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), v);
    if (t.empty() || r.ec != std::errc() || r.ptr != t.data() + t.size()) RaiseNotValid(s, "integer");
    return v;
}

// Moves Position past leading delimiters, cuts out the next item and moves
// Position behind its delimiter. False when the text is used up.
bool NextItem(std::string_view s, int32_t& position, std::string_view delimiter, std::string_view& item) {
    size_t p = position < 0 ? 0 : static_cast<size_t>(position);
    if (!delimiter.empty())
        while (p < s.size() && s.substr(p, delimiter.size()) == delimiter) p += delimiter.size();
    if (p >= s.size()) {
        position = static_cast<int32_t>(std::max(s.size(), p));
        return false;
    }
    const size_t q = delimiter.empty() ? std::string_view::npos : s.find(delimiter, p);
    if (q == std::string_view::npos) {
        item = s.substr(p);
        position = static_cast<int32_t>(s.size());
    } else {
        item = s.substr(p, q - p);
        position = static_cast<int32_t>(q + delimiter.size());
    }
    return true;
}

template <class T, class Parse>
bool ExtractItem(std::string_view s, int32_t& position, std::string_view delimiter, T& value, T usedUp,
                 Parse parse) {
    std::string_view item;
    if (!NextItem(s, position, delimiter, item)) {
        value = usedUp;
        return false;
    }
    value = parse(item);
    return true;
}

// ---------------------------------------------------------------------------
// Quick sort
// ---------------------------------------------------------------------------

// Sort key of a data element sorted without a key array: the value itself,
// or the squared magnitude of a complex value in its own precision.
inline double SortKey(double x) { return x; }
inline float SortKey(float x) { return x; }
inline double SortKey(const TCplx& z) { return z.Re * z.Re + z.Im * z.Im; }
inline float SortKey(const TSCplx& z) { return z.Re * z.Re + z.Im * z.Im; }

using detail::HoareSort;

// Elements at v[index + k * stride], ordered by their own key.
template <bool Desc, class T>
void SortOwn(T* v, ptrdiff_t index, ptrdiff_t stride, int32_t lo, int32_t hi) {
    using K = decltype(SortKey(*v));
    T* b = v + index;
    HoareSort<Desc, K>(
        lo, hi, [b, stride](int32_t i) { return SortKey(b[i * stride]); },
        [b, stride](int32_t i, int32_t j) { std::swap(b[i * stride], b[j * stride]); });
}

// Data at v[vIndex + k * vStride] ordered by keys at k[kIndex + k * kStride].
template <bool Desc, class V, class K>
void SortKeyed(V* v, ptrdiff_t vIndex, ptrdiff_t vStride, K* k, ptrdiff_t kIndex, ptrdiff_t kStride, int32_t lo,
               int32_t hi) {
    V* vb = v + vIndex;
    K* kb = k + kIndex;
    HoareSort<Desc, K>(
        lo, hi, [kb, kStride](int32_t i) { return kb[i * kStride]; },
        [=](int32_t i, int32_t j) {
            std::swap(kb[i * kStride], kb[j * kStride]);
            std::swap(vb[i * vStride], vb[j * vStride]);
        });
}

// Rows of a row-major matrix, ordered by their element in column col.
template <bool Desc, class T>
void SortRowsByCol(T* v, int32_t cols, int32_t col, int32_t lo, int32_t hi) {
    using K = decltype(SortKey(*v));
    const ptrdiff_t c = cols;
    HoareSort<Desc, K>(
        lo, hi, [=](int32_t i) { return SortKey(v[i * c + col]); },
        [=](int32_t i, int32_t j) { std::swap_ranges(v + i * c, v + i * c + c, v + j * c); });
}

// Rows of a row-major matrix, ordered by one key per row.
template <bool Desc, class V, class K>
void SortRowsByKeys(V* v, int32_t cols, K* keys, int32_t lo, int32_t hi) {
    const ptrdiff_t c = cols;
    HoareSort<Desc, K>(
        lo, hi, [keys](int32_t i) { return keys[i]; },
        [=](int32_t i, int32_t j) {
            std::swap(keys[i], keys[j]);
            std::swap_ranges(v + i * c, v + i * c + c, v + j * c);
        });
}

}  // namespace

// ---------------------------------------------------------------------------
// Named entries
// ---------------------------------------------------------------------------
std::string SampleToStr(double x) { return GeneralText<double>(x, 15, 0); }
std::string SampleToStr(double x, int32_t Precision, int32_t Digits) { return GeneralText<double>(x, Precision, Digits); }
std::string SampleToStrf(float x) { return GeneralText<float>(x, 7, 0); }
std::string SampleToStrf(float x, int32_t Precision, int32_t Digits) { return GeneralText<float>(x, Precision, Digits); }

std::string FormatSample(std::string_view Format, double x) {
    return Format.empty() ? SampleToStr(x) : FormatValue<double>(Format, x);
}
std::string FormatSample(double x, std::string_view Format) { return FormatSample(Format, x); }

std::string FormatCplx(const TCplx& z, std::string_view ReFormat, std::string_view ImFormat) {
    return CplxFormatted(z, ReFormat, ImFormat, 15);
}
std::string FormatCplx(const TSCplx& z, std::string_view ReFormat, std::string_view ImFormat) {
    return CplxFormatted(z, ReFormat, ImFormat, 7);
}
std::string CplxToStr(const TCplx& z, int32_t Precision, int32_t Digits) { return CplxText(z, Precision, Digits); }
std::string CplxToStr(const TSCplx& z, int32_t Precision, int32_t Digits) { return CplxText(z, Precision, Digits); }

double StrToVal(std::string_view s) { return TextToValue<double>(s); }
double StrToDouble(std::string_view s) { return TextToValue<double>(s); }
double StrToSample(std::string_view s) { return TextToValue<double>(s); }
float StrToSingle(std::string_view s) { return TextToValue<float>(s); }
int32_t StrToInteger(std::string_view s) { return TextToInteger(s); }
TCplx StrToCplx(std::string_view s) { return TextToCplx<TCplx>(s); }
TSCplx StrToCplxSingle(std::string_view s) { return TextToCplx<TSCplx>(s); }

bool ExtractCplx(std::string_view s, int32_t& Position, std::string_view Delimiter, TCplx& z) {
    return ExtractItem(s, Position, Delimiter, z, CNAN, TextToCplx<TCplx>);
}
bool ExtractCplxSingle(std::string_view s, int32_t& Position, std::string_view Delimiter, TSCplx& z) {
    return ExtractItem(s, Position, Delimiter, z, CNAN_SINGLE, TextToCplx<TSCplx>);
}
bool ExtractSample(std::string_view s, int32_t& Position, std::string_view Delimiter, double& x) {
    return ExtractItem(s, Position, Delimiter, x, NAN_, TextToValue<double>);
}
bool ExtractInteger(std::string_view s, int32_t& Position, std::string_view Delimiter, int32_t& x) {
    return ExtractItem(s, Position, Delimiter, x, 0, TextToInteger);
}

std::string IntPrecisionToStr(TIntPrecision Precision) {
    switch (Precision) {
        case prInt32: return "integer, 4 bytes";
        case prInt16: return "integer, 2 bytes";
        case prInt8: return "unsigned integer, 1 byte";
    }
    return {};
}

void QuickSortAsc(double* Values, int32_t Lo, int32_t Hi) { SortOwn<false>(Values, 0, 1, Lo, Hi); }
void QuickSortAsc(float* Values, int32_t Lo, int32_t Hi) { SortOwn<false>(Values, 0, 1, Lo, Hi); }
void QuickSortAsc(TCplx* Values, int32_t Lo, int32_t Hi) { SortOwn<false>(Values, 0, 1, Lo, Hi); }
void QuickSortAsc(TSCplx* Values, int32_t Lo, int32_t Hi) { SortOwn<false>(Values, 0, 1, Lo, Hi); }
void QuickSortDesc(double* Values, int32_t Lo, int32_t Hi) { SortOwn<true>(Values, 0, 1, Lo, Hi); }
void QuickSortDesc(float* Values, int32_t Lo, int32_t Hi) { SortOwn<true>(Values, 0, 1, Lo, Hi); }
void QuickSortDesc(TCplx* Values, int32_t Lo, int32_t Hi) { SortOwn<true>(Values, 0, 1, Lo, Hi); }
void QuickSortDesc(TSCplx* Values, int32_t Lo, int32_t Hi) { SortOwn<true>(Values, 0, 1, Lo, Hi); }

void QuickSortAsc(double* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi) {
    SortOwn<false>(Values, Index, Stride, Lo, Hi);
}
void QuickSortAsc(float* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi) {
    SortOwn<false>(Values, Index, Stride, Lo, Hi);
}
void QuickSortDesc(double* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi) {
    SortOwn<true>(Values, Index, Stride, Lo, Hi);
}
void QuickSortDesc(float* Values, int32_t Index, int32_t Stride, int32_t Lo, int32_t Hi) {
    SortOwn<true>(Values, Index, Stride, Lo, Hi);
}

#define ROVANE_KEYED_SORTS(V, K)                                                                             \
    void CQuickSortAsc(V* Values, K* Keys, int32_t Lo, int32_t Hi) {                                         \
        SortKeyed<false>(Values, 0, 1, Keys, 0, 1, Lo, Hi);                                                  \
    }                                                                                                        \
    void CQuickSortDesc(V* Values, K* Keys, int32_t Lo, int32_t Hi) {                                        \
        SortKeyed<true>(Values, 0, 1, Keys, 0, 1, Lo, Hi);                                                   \
    }
#define ROVANE_STRIDED_SORTS(V, K)                                                                           \
    void CQuickSortAsc(V* Values, int32_t ValuesIndex, int32_t ValuesStride, K* Keys, int32_t KeysIndex,     \
                       int32_t KeysStride, int32_t Lo, int32_t Hi) {                                         \
        SortKeyed<false>(Values, ValuesIndex, ValuesStride, Keys, KeysIndex, KeysStride, Lo, Hi);            \
    }                                                                                                        \
    void CQuickSortDesc(V* Values, int32_t ValuesIndex, int32_t ValuesStride, K* Keys, int32_t KeysIndex,    \
                        int32_t KeysStride, int32_t Lo, int32_t Hi) {                                        \
        SortKeyed<true>(Values, ValuesIndex, ValuesStride, Keys, KeysIndex, KeysStride, Lo, Hi);             \
    }                                                                                                        \
    void CQuickSortAscMtx(V* Values, int32_t Cols, K* Keys, int32_t Lo, int32_t Hi) {                        \
        SortRowsByKeys<false>(Values, Cols, Keys, Lo, Hi);                                                   \
    }                                                                                                        \
    void CQuickSortDescMtx(V* Values, int32_t Cols, K* Keys, int32_t Lo, int32_t Hi) {                       \
        SortRowsByKeys<true>(Values, Cols, Keys, Lo, Hi);                                                    \
    }
#define ROVANE_ROW_SORTS(T)                                                                                  \
    void QuickSortAscMtx(T* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi) {                     \
        SortRowsByCol<false>(Values, Cols, Col, Lo, Hi);                                                     \
    }                                                                                                        \
    void QuickSortDescMtx(T* Values, int32_t Cols, int32_t Col, int32_t Lo, int32_t Hi) {                    \
        SortRowsByCol<true>(Values, Cols, Col, Lo, Hi);                                                      \
    }

ROVANE_KEYED_SORTS(TCplx, double)
ROVANE_KEYED_SORTS(TSCplx, float)
ROVANE_KEYED_SORTS(double, double)
ROVANE_KEYED_SORTS(float, float)
ROVANE_KEYED_SORTS(int32_t, double)
ROVANE_KEYED_SORTS(int32_t, float)
ROVANE_STRIDED_SORTS(TCplx, double)
ROVANE_STRIDED_SORTS(TSCplx, float)
ROVANE_STRIDED_SORTS(double, double)
ROVANE_STRIDED_SORTS(float, float)
ROVANE_ROW_SORTS(double)
ROVANE_ROW_SORTS(float)
ROVANE_ROW_SORTS(TCplx)
ROVANE_ROW_SORTS(TSCplx)
#undef ROVANE_KEYED_SORTS
#undef ROVANE_STRIDED_SORTS
#undef ROVANE_ROW_SORTS

}  // namespace rovane
