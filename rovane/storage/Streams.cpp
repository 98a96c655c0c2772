// Sample conversion and raw stream access beneath the container streams.
//
// Conversions run chunk by chunk through a small buffer: the encode and
// decode loops are plain elementwise loops over the chunk (clamp, round,
// narrow), which the compiler turns into vector code; the buffer then goes to
// the stream in one write.
#include "rovane/storage/Streams.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>
#include <vector>

#include <emmintrin.h>

// The chunk buffers are filled by one loop and read by the next over the same
// count; g++ cannot follow that through the pointer and warns.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

namespace rovane {

int32_t FileVersion = -1;

namespace {

// Elements per conversion chunk: the widest encoded chunk (8 bytes a value)
// is 32 KiB and stays in the first-level cache with its source.
constexpr int64_t kChunk = 4096;

void WriteBytes(std::ostream& s, const void* p, int64_t n) {
    if (n <= 0) return;
    s.write(static_cast<const char*>(p), static_cast<std::streamsize>(n));
    if (!s) ERaise("Stream write error");
}

// Reads n bytes; false when the stream ended first.
bool ReadBytes(std::istream& s, void* p, int64_t n) {
    if (n <= 0) return true;
    s.read(static_cast<char*>(p), static_cast<std::streamsize>(n));
    return s.gcount() == static_cast<std::streamsize>(n);
}

void ReadBytesOrRaise(std::istream& s, void* p, int64_t n) {
    if (!ReadBytes(s, p, n)) ERaise("Stream read error");
}

template <class U>
U Swap(U v) {
    if constexpr (sizeof(U) == 2) return static_cast<U>(__builtin_bswap16(static_cast<uint16_t>(v)));
    else if constexpr (sizeof(U) == 4) return static_cast<U>(__builtin_bswap32(static_cast<uint32_t>(v)));
    else return static_cast<U>(__builtin_bswap64(static_cast<uint64_t>(v)));
}

// Reverses the bytes of each of n elements of width W in place.
template <int W>
void SwapInPlace(uint8_t* p, int64_t n) {
    if constexpr (W == 1) {
        return;
    } else if constexpr (W == 3) {
        for (int64_t i = 0; i < n; ++i) std::swap(p[3 * i], p[3 * i + 2]);
    } else {
        using U = std::conditional_t<W == 2, uint16_t, std::conditional_t<W == 4, uint32_t, uint64_t>>;
        for (int64_t i = 0; i < n; ++i) {
            U v;
            std::memcpy(&v, p + W * i, W);
            v = Swap(v);
            std::memcpy(p + W * i, &v, W);
        }
    }
}

// Round to nearest, ties to even, by the add-and-subtract of 1.5 * 2^(mantissa
// bits): exact for |x| below 2^22 (float) or 2^51 (double), which every
// caller guarantees by clamping first. Vectorises on any SSE level, where
// nearbyint would be a library call.
template <class F>
inline F RoundNear(F x) {
    constexpr F m = sizeof(F) == 8 ? F(6755399441055744.0) : F(12582912.0f);
    return (x + m) - m;
}

// Saturating conversion to 32-bit integers: NaN gives 0, values are clamped
// to [lo, hi] and converted by truncation or by the processor's rounding
// (to nearest, ties to even). SSE2 on four (two) values at a time, so that
// the compiler need not prove the compare-and-select free of traps; the tail
// goes through the same scalar instructions.
void ToInt32Sat(const float* s, int32_t* d, int64_t n, float lo, float hi, TRounding r) {
    const __m128 vlo = _mm_set1_ps(lo), vhi = _mm_set1_ps(hi);
    int64_t i = 0;
    auto clamp = [&](__m128 x) {
        x = _mm_and_ps(x, _mm_cmpord_ps(x, x));
        return _mm_min_ps(_mm_max_ps(x, vlo), vhi);
    };
    if (r == rnRound) {
        for (; i + 4 <= n; i += 4)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i), _mm_cvtps_epi32(clamp(_mm_loadu_ps(s + i))));
        for (; i < n; ++i) d[i] = _mm_cvtss_si32(clamp(_mm_set_ss(s[i])));
    } else {
        for (; i + 4 <= n; i += 4)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i), _mm_cvttps_epi32(clamp(_mm_loadu_ps(s + i))));
        for (; i < n; ++i) d[i] = _mm_cvttss_si32(clamp(_mm_set_ss(s[i])));
    }
}

void ToInt32Sat(const double* s, int32_t* d, int64_t n, double lo, double hi, TRounding r) {
    const __m128d vlo = _mm_set1_pd(lo), vhi = _mm_set1_pd(hi);
    int64_t i = 0;
    auto clamp = [&](__m128d x) {
        x = _mm_and_pd(x, _mm_cmpord_pd(x, x));
        return _mm_min_pd(_mm_max_pd(x, vlo), vhi);
    };
    if (r == rnRound) {
        for (; i + 2 <= n; i += 2)
            _mm_storel_epi64(reinterpret_cast<__m128i*>(d + i), _mm_cvtpd_epi32(clamp(_mm_loadu_pd(s + i))));
        for (; i < n; ++i) d[i] = _mm_cvtsd_si32(clamp(_mm_set_sd(s[i])));
    } else {
        for (; i + 2 <= n; i += 2)
            _mm_storel_epi64(reinterpret_cast<__m128i*>(d + i), _mm_cvttpd_epi32(clamp(_mm_loadu_pd(s + i))));
        for (; i < n; ++i) d[i] = _mm_cvttsd_si32(clamp(_mm_set_sd(s[i])));
    }
}

// prSmallInt in one pass: narrow to single, clamp (NaN to 0), convert and
// pack eight values into 16 bytes. Returns the count done; the caller
// finishes the tail through the general path.
template <class F>
int64_t SmallIntPass(const F* s, int64_t n, TRounding r, uint8_t* dst) {
    const __m128 lo = _mm_set1_ps(-32768.0f), hi = _mm_set1_ps(32767.0f);
    auto load4 = [&](int64_t i) {
        if constexpr (std::is_same_v<F, double>)
            return _mm_movelh_ps(_mm_cvtpd_ps(_mm_loadu_pd(s + i)), _mm_cvtpd_ps(_mm_loadu_pd(s + i + 2)));
        else
            return _mm_loadu_ps(s + i);
    };
    auto clamp = [&](__m128 x) { return _mm_min_ps(_mm_max_ps(_mm_and_ps(x, _mm_cmpord_ps(x, x)), lo), hi); };
    int64_t i = 0;
    if (r == rnRound) {
        for (; i + 8 <= n; i += 8)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 2 * i),
                             _mm_packs_epi32(_mm_cvtps_epi32(clamp(load4(i))), _mm_cvtps_epi32(clamp(load4(i + 4)))));
    } else {
        for (; i + 8 <= n; i += 8)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 2 * i),
                             _mm_packs_epi32(_mm_cvttps_epi32(clamp(load4(i))), _mm_cvttps_epi32(clamp(load4(i + 4)))));
    }
    return i;
}

// Saturating conversion to the integer type I, stored least significant
// byte first at dst (the clamp makes the narrowing exact).
template <class I, class F>
void ToIntSat(const F* s, uint8_t* dst, int64_t n, F lo, F hi, TRounding r, int32_t* tmp) {
    ToInt32Sat(s, tmp, n, lo, hi, r);
    if constexpr (sizeof(I) == 4) {
        std::memcpy(dst, tmp, static_cast<size_t>(n) * 4);
    } else {
        for (int64_t i = 0; i < n; ++i) {
            const I v = static_cast<I>(tmp[i]);
            std::memcpy(dst + sizeof(I) * i, &v, sizeof(I));
        }
    }
}

// The narrowing step of the 16-bit and 8-bit formats: a double source passes
// through single precision; a single source is used as it stands.
template <class F>
const float* AsSingle(const F* s, int64_t n, float* tmp) {
    if constexpr (std::is_same_v<F, float>) {
        (void)n;
        (void)tmp;
        return s;
    } else {
        for (int64_t i = 0; i < n; ++i) tmp[i] = static_cast<float>(s[i]);
        return tmp;
    }
}

// Widening step of the 32-bit and 24-bit integer formats.
template <class F>
const double* AsDouble(const F* s, int64_t n, double* tmp) {
    if constexpr (std::is_same_v<F, double>) {
        (void)n;
        (void)tmp;
        return s;
    } else {
        for (int64_t i = 0; i < n; ++i) tmp[i] = static_cast<double>(s[i]);
        return tmp;
    }
}

template <class T>
void StoreTyped(const T* v, int64_t n, uint8_t* dst) {
    std::memcpy(dst, v, static_cast<size_t>(n) * sizeof(T));
}

uint8_t MuLawOf(int32_t pcm) {
    static constexpr int16_t segEnd[8] = {0x3F, 0x7F, 0xFF, 0x1FF, 0x3FF, 0x7FF, 0xFFF, 0x1FFF};
    int32_t mask;
    pcm >>= 2;
    if (pcm < 0) {
        pcm = -pcm;
        mask = 0x7F;
    } else {
        mask = 0xFF;
    }
    if (pcm > 8159) pcm = 8159;
    pcm += 0x84 >> 2;
    int32_t seg = 0;
    while (seg < 8 && pcm > segEnd[seg]) ++seg;
    if (seg >= 8) return static_cast<uint8_t>(0x7F ^ mask);
    const int32_t u = (seg << 4) | ((pcm >> (seg + 1)) & 0xF);
    return static_cast<uint8_t>(u ^ mask);
}

int16_t LinOfMuLaw(uint8_t code) {
    const int32_t u = static_cast<uint8_t>(~code);
    int32_t t = ((u & 0x0F) << 3) + 0x84;
    t <<= (u & 0x70) >> 4;
    return static_cast<int16_t>((u & 0x80) ? (0x84 - t) : (t - 0x84));
}

uint8_t ALawOf(int32_t pcm) {
    static constexpr int16_t segEnd[8] = {0x1F, 0x3F, 0x7F, 0xFF, 0x1FF, 0x3FF, 0x7FF, 0xFFF};
    int32_t mask;
    pcm >>= 3;
    if (pcm >= 0) {
        mask = 0xD5;
    } else {
        mask = 0x55;
        pcm = -pcm - 1;
    }
    int32_t seg = 0;
    while (seg < 8 && pcm > segEnd[seg]) ++seg;
    if (seg >= 8) return static_cast<uint8_t>(0x7F ^ mask);
    int32_t a = seg << 4;
    a |= seg < 2 ? (pcm >> 1) & 0x0F : (pcm >> seg) & 0x0F;
    return static_cast<uint8_t>(a ^ mask);
}

int16_t LinOfALaw(uint8_t code) {
    const int32_t a = code ^ 0x55;
    int32_t t = (a & 0x0F) << 4;
    const int32_t seg = (a & 0x70) >> 4;
    if (seg == 0) t += 8;
    else if (seg == 1) t += 0x108;
    else t = (t + 0x108) << (seg - 1);
    return static_cast<int16_t>((a & 0x80) ? t : -t);
}

struct G711Tables {
    int16_t mu[256];
    int16_t a[256];
    G711Tables() {
        for (int32_t c = 0; c < 256; ++c) {
            mu[c] = LinOfMuLaw(static_cast<uint8_t>(c));
            a[c] = LinOfALaw(static_cast<uint8_t>(c));
        }
    }
};
const G711Tables& Tables() {
    static const G711Tables t;
    return t;
}

// Encodes n real values of a chunk (n <= kChunk) into dst.
template <class F>
void EncodeChunk(const F* s, int64_t n, TPrecision p, TRounding r, TEndianness e, uint8_t* dst) {
    alignas(64) float f32[kChunk];
    alignas(64) double f64[kChunk];
    alignas(64) int32_t i32[kChunk];
    switch (p) {
        case prDouble: {
            if constexpr (std::is_same_v<F, double>) {
                StoreTyped(s, n, dst);
            } else {
                for (int64_t i = 0; i < n; ++i) f64[i] = s[i];
                StoreTyped(f64, n, dst);
            }
            if (e == boBigEndian) SwapInPlace<8>(dst, n);
            break;
        }
        case prSingle: {
            StoreTyped(AsSingle(s, n, f32), n, dst);
            if (e == boBigEndian) SwapInPlace<4>(dst, n);
            break;
        }
        case prInteger: {
            ToIntSat<int32_t>(AsDouble(s, n, f64), dst, n, -2147483648.0, 2147483647.0, r, i32);
            if (e == boBigEndian) SwapInPlace<4>(dst, n);
            break;
        }
        case prCardinal: {
            const double* x = AsDouble(s, n, f64);
            uint32_t* u = reinterpret_cast<uint32_t*>(i32);
            for (int64_t i = 0; i < n; ++i) {
                const double v = x[i];
                // An unordered value takes the saturating branch below 0.
                if (!(v >= 0)) u[i] = 0;
                else if (v > 4294967295.0) u[i] = 4294967295u;
                else u[i] = static_cast<uint32_t>(static_cast<int64_t>(r == rnRound ? RoundNear(v) : std::trunc(v)));
            }
            StoreTyped(u, n, dst);
            if (e == boBigEndian) SwapInPlace<4>(dst, n);
            break;
        }
        case prSmallInt: {
            const int64_t done = SmallIntPass(s, n, r, dst);
            ToIntSat<int16_t>(AsSingle(s + done, n - done, f32), dst + 2 * done, n - done, -32768.0f, 32767.0f, r, i32);
            if (e == boBigEndian) SwapInPlace<2>(dst, n);
            break;
        }
        case prWord: {
            ToIntSat<uint16_t>(AsSingle(s, n, f32), dst, n, 0.0f, 65535.0f, r, i32);
            if (e == boBigEndian) SwapInPlace<2>(dst, n);
            break;
        }
        case prShortInt: ToIntSat<int8_t>(AsSingle(s, n, f32), dst, n, -128.0f, 127.0f, r, i32); break;
        case prByte: ToIntSat<uint8_t>(AsSingle(s, n, f32), dst, n, 0.0f, 255.0f, r, i32); break;
        case prMuLaw:
        case prALaw: {
            ToInt32Sat(AsSingle(s, n, f32), i32, n, -32768.0f, 32767.0f, r);
            if (p == prMuLaw)
                for (int64_t i = 0; i < n; ++i) dst[i] = MuLawOf(i32[i]);
            else
                for (int64_t i = 0; i < n; ++i) dst[i] = ALawOf(i32[i]);
            break;
        }
        case prInt24: {
            ToInt32Sat(AsDouble(s, n, f64), i32, n, -8388608.0, 8388607.0, r);
            for (int64_t i = 0; i < n; ++i) {
                const uint32_t v = static_cast<uint32_t>(i32[i]);
                dst[3 * i] = static_cast<uint8_t>(v);
                dst[3 * i + 1] = static_cast<uint8_t>(v >> 8);
                dst[3 * i + 2] = static_cast<uint8_t>(v >> 16);
            }
            if (e == boBigEndian) SwapInPlace<3>(dst, n);
            break;
        }
        default: break;
    }
}

template <class T, class F>
void LoadTyped(const uint8_t* src, int64_t n, bool swap, F* d) {
    for (int64_t i = 0; i < n; ++i) {
        T v;
        std::memcpy(&v, src + sizeof(T) * i, sizeof(T));
        if (swap) {
            if constexpr (std::is_same_v<T, double>) v = std::bit_cast<double>(Swap(std::bit_cast<uint64_t>(v)));
            else if constexpr (std::is_same_v<T, float>) v = std::bit_cast<float>(Swap(std::bit_cast<uint32_t>(v)));
            else if constexpr (sizeof(T) > 1) v = Swap(v);
        }
        d[i] = static_cast<F>(v);
    }
}

// Decodes n real values of format p from src into d.
template <class F>
void DecodeChunk(const uint8_t* src, int64_t n, TPrecision p, TEndianness e, F* d) {
    const bool sw = e == boBigEndian;
    switch (p) {
        case prDouble: LoadTyped<double>(src, n, sw, d); break;
        case prSingle: LoadTyped<float>(src, n, sw, d); break;
        case prInteger: LoadTyped<int32_t>(src, n, sw, d); break;
        case prCardinal: LoadTyped<uint32_t>(src, n, sw, d); break;
        case prSmallInt: LoadTyped<int16_t>(src, n, sw, d); break;
        case prWord: LoadTyped<uint16_t>(src, n, sw, d); break;
        case prShortInt: LoadTyped<int8_t>(src, n, false, d); break;
        case prByte: LoadTyped<uint8_t>(src, n, false, d); break;
        case prMuLaw: {
            const int16_t* t = Tables().mu;
            for (int64_t i = 0; i < n; ++i) d[i] = static_cast<F>(t[src[i]]);
            break;
        }
        case prALaw: {
            const int16_t* t = Tables().a;
            for (int64_t i = 0; i < n; ++i) d[i] = static_cast<F>(t[src[i]]);
            break;
        }
        case prInt24: {
            for (int64_t i = 0; i < n; ++i) {
                const uint8_t* q = src + 3 * i;
                const uint8_t b0 = sw ? q[2] : q[0], b2 = sw ? q[0] : q[2];
                const uint32_t u = static_cast<uint32_t>(b0) | (static_cast<uint32_t>(q[1]) << 8) |
                                   (static_cast<uint32_t>(b2) << 16);
                const int32_t v = static_cast<int32_t>(u << 8) >> 8;  // sign of the third byte
                d[i] = static_cast<F>(v);
            }
            break;
        }
        default: break;
    }
}

bool KnownPrecision(TPrecision p) { return p >= prDouble && p <= prInt24; }

// Elements per stream write or read of converted values: large enough that a
// file stream passes each run straight to the system in few calls.
constexpr int64_t kIoChunk = 16 * kChunk;

// n real values to a stream.
template <class F>
void WriteValuesT(std::ostream& s, const F* src, int64_t n, TPrecision p, TRounding r, TEndianness e) {
    if (n <= 0 || !KnownPrecision(p)) return;
    const bool le = e == boLittleEndian;
    if (le && ((p == prDouble && std::is_same_v<F, double>) || (p == prSingle && std::is_same_v<F, float>))) {
        WriteBytes(s, src, n * static_cast<int64_t>(sizeof(F)));
        return;
    }
    const int64_t w = SizeOfPrecision(p, false);
    std::vector<uint8_t> buf(static_cast<size_t>(std::min(n, kIoChunk) * w));
    for (int64_t at = 0; at < n; at += kIoChunk) {
        const int64_t m = std::min(kIoChunk, n - at);
        for (int64_t k = 0; k < m; k += kChunk) EncodeChunk(src + at + k, std::min(kChunk, m - k), p, r, e, buf.data() + k * w);
        WriteBytes(s, buf.data(), m * w);
    }
}

template <class F>
int64_t WriteValuesPtr(uint8_t* dst, const F* src, int64_t n, TPrecision p, TRounding r, TEndianness e) {
    if (n <= 0 || !KnownPrecision(p)) return 0;
    const int64_t w = SizeOfPrecision(p, false);
    for (int64_t at = 0; at < n; at += kChunk) EncodeChunk(src + at, std::min(kChunk, n - at), p, r, e, dst + at * w);
    return n * w;
}

template <class F>
void ReadValuesT(std::istream& s, F* dst, int64_t n, TPrecision p, TEndianness e) {
    if (n <= 0 || !KnownPrecision(p)) return;
    const bool le = e == boLittleEndian;
    if ((p == prDouble && std::is_same_v<F, double>) || (p == prSingle && std::is_same_v<F, float>)) {
        ReadBytesOrRaise(s, dst, n * static_cast<int64_t>(sizeof(F)));
        if (!le) SwapInPlace<sizeof(F)>(reinterpret_cast<uint8_t*>(dst), n);
        return;
    }
    const int64_t w = SizeOfPrecision(p, false);
    std::vector<uint8_t> buf(static_cast<size_t>(std::min(n, kIoChunk) * w));
    for (int64_t at = 0; at < n; at += kIoChunk) {
        const int64_t m = std::min(kIoChunk, n - at);
        ReadBytesOrRaise(s, buf.data(), m * w);
        DecodeChunk(buf.data(), m, p, e, dst + at);
    }
}

template <class T>
void WriteRaw(std::ostream& s, const T* src, int64_t n, TEndianness e) {
    if (n <= 0) return;
    if (e == boLittleEndian || sizeof(T) == 1) {
        WriteBytes(s, src, n * static_cast<int64_t>(sizeof(T)));
        return;
    }
    alignas(64) uint8_t buf[kChunk * 8];
    const int64_t per = static_cast<int64_t>(sizeof(buf) / sizeof(T));
    for (int64_t at = 0; at < n; at += per) {
        const int64_t m = std::min(per, n - at);
        std::memcpy(buf, src + at, static_cast<size_t>(m) * sizeof(T));
        SwapInPlace<sizeof(T)>(buf, m);
        WriteBytes(s, buf, m * static_cast<int64_t>(sizeof(T)));
    }
}

template <class T>
void ReadRaw(std::istream& s, T* dst, int64_t n, TEndianness e) {
    if (n <= 0) return;
    ReadBytesOrRaise(s, dst, n * static_cast<int64_t>(sizeof(T)));
    if (e == boBigEndian) SwapInPlace<sizeof(T)>(reinterpret_cast<uint8_t*>(dst), n);
}

template <class T>
T ReadField(std::istream& s, int32_t& got) {
    uint8_t b[sizeof(T)] = {};
    s.read(reinterpret_cast<char*>(b), sizeof(T));
    got = static_cast<int32_t>(s.gcount());
    if (got != static_cast<int32_t>(sizeof(T))) return T{};
    T v;
    std::memcpy(&v, b, sizeof(T));  // least significant byte first on this little-endian target
    return v;
}

template <class T>
T ReadFieldOrRaise(std::istream& s) {
    int32_t got = 0;
    const T v = ReadField<T>(s, got);
    if (got != static_cast<int32_t>(sizeof(T))) ERaise("Stream read error");
    return v;
}

template <class T>
void WriteField(std::ostream& s, T v) {
    WriteBytes(s, &v, sizeof(T));
}

}  // namespace

static_assert(std::endian::native == std::endian::little, "the stream layer assumes a little-endian target");

std::string PrecisionToStr(TPrecision Precision) {
    switch (Precision) {
        case prDouble: return "float, 8 bytes";
        case prSingle: return "float, 4 bytes";
        case prInteger: return "integer, 4 bytes";
        case prCardinal: return "unsigned integer, 4 bytes";
        case prSmallInt: return "integer, 2 bytes";
        case prWord: return "unsigned integer, 2 bytes";
        case prShortInt: return "integer, 1 byte";
        case prByte: return "unsigned integer, 1 byte";
        case prMuLaw: return "MuLaw integer, 1 byte";
        case prALaw: return "ALaw integer, 1 byte";
        case prInt24: return "integer, 3 bytes";
        default: return "Unknown";
    }
}

int32_t SizeOfPrecision(TPrecision Precision, bool Complex) {
    int32_t s = 0;
    switch (Precision) {
        case prDouble: s = 8; break;
        case prSingle:
        case prInteger:
        case prCardinal: s = 4; break;
        case prSmallInt:
        case prWord: s = 2; break;
        case prShortInt:
        case prByte:
        case prMuLaw:
        case prALaw: s = 1; break;
        case prInt24: s = 3; break;
        default: return 0;
    }
    return s * (1 + (Complex ? 1 : 0));
}

double Bit24ToFloat(const uint8_t* Src) {
    double d;
    DecodeChunk(Src, 1, prInt24, boLittleEndian, &d);
    return d;
}

void FloatTo24Bit(double x, uint8_t* Dst, TRounding Rounding) {
    EncodeChunk(&x, 1, prInt24, Rounding, boLittleEndian, Dst);
}

uint8_t LinToMuLaw(int16_t x) { return MuLawOf(x); }
int16_t MuLawToLin(uint8_t code) { return Tables().mu[code]; }
uint8_t LinToALaw(int16_t x) { return ALawOf(x); }
int16_t ALawToLin(uint8_t code) { return Tables().a[code]; }

// ---- float arrays ---------------------------------------------------------
void WriteBinaryValues(std::ostream& Stream, const double* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                       TRounding Rounding, TEndianness Endianness) {
    WriteValuesT(Stream, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}
void WriteBinaryValues(std::ostream& Stream, const float* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                       TRounding Rounding, TEndianness Endianness) {
    WriteValuesT(Stream, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}
void WriteBinaryValuesc(std::ostream& Stream, const TCplx* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                        TRounding Rounding, TEndianness Endianness) {
    WriteValuesT(Stream, reinterpret_cast<const double*>(Src + SrcIndex), 2 * int64_t(Len), Precision, Rounding,
                 Endianness);
}
void WriteBinaryValuesc(std::ostream& Stream, const TSCplx* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                        TRounding Rounding, TEndianness Endianness) {
    WriteValuesT(Stream, reinterpret_cast<const float*>(Src + SrcIndex), 2 * int64_t(Len), Precision, Rounding,
                 Endianness);
}
int64_t WriteBinaryValues(uint8_t* Dst, const double* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                          TRounding Rounding, TEndianness Endianness) {
    return WriteValuesPtr(Dst, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}
int64_t WriteBinaryValues(uint8_t* Dst, const float* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                          TRounding Rounding, TEndianness Endianness) {
    return WriteValuesPtr(Dst, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}
int64_t WriteBinaryValuesc(uint8_t* Dst, const TCplx* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                           TRounding Rounding, TEndianness Endianness) {
    return WriteValuesPtr(Dst, reinterpret_cast<const double*>(Src + SrcIndex), 2 * int64_t(Len), Precision,
                          Rounding, Endianness);
}
int64_t WriteBinaryValuesc(uint8_t* Dst, const TSCplx* Src, int32_t SrcIndex, int32_t Len, TPrecision Precision,
                           TRounding Rounding, TEndianness Endianness) {
    return WriteValuesPtr(Dst, reinterpret_cast<const float*>(Src + SrcIndex), 2 * int64_t(Len), Precision,
                          Rounding, Endianness);
}

namespace {
template <class F>
void WriteToByteArray(TByteArray& Dst, int64_t& Position, const F* Src, int32_t Len, TPrecision Precision,
                      TRounding Rounding, TEndianness Endianness) {
    if (Position < 0) ERangeErrorRaiseFmt("WriteBinaryValues: Position < 0, %d < 0", Position);
    const int64_t need = Position + int64_t(std::max(Len, 0)) * SizeOfPrecision(Precision, false);
    if (need > std::numeric_limits<int32_t>::max()) ERangeErrorRaise("WriteBinaryValues: Position + bytes > MaxInt");
    if (need > Dst.Length()) Dst.SetLength(static_cast<int32_t>(need));
    Position += WriteValuesPtr(Dst.data() + Position, Src, Len, Precision, Rounding, Endianness);
}
}  // namespace

void WriteBinaryValues(TByteArray& Dst, int64_t& Position, const double* Src, int32_t SrcIndex, int32_t Len,
                       TPrecision Precision, TRounding Rounding, TEndianness Endianness) {
    WriteToByteArray(Dst, Position, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}
void WriteBinaryValues(TByteArray& Dst, int64_t& Position, const float* Src, int32_t SrcIndex, int32_t Len,
                       TPrecision Precision, TRounding Rounding, TEndianness Endianness) {
    WriteToByteArray(Dst, Position, Src + SrcIndex, Len, Precision, Rounding, Endianness);
}

void ReadBinaryValues(std::istream& Stream, double* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                      TEndianness Endianness) {
    ReadValuesT(Stream, Dst + DstIndex, Len, Precision, Endianness);
}
void ReadBinaryValues(std::istream& Stream, float* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                      TEndianness Endianness) {
    ReadValuesT(Stream, Dst + DstIndex, Len, Precision, Endianness);
}
void ReadBinaryValuesc(std::istream& Stream, TCplx* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                       TEndianness Endianness) {
    ReadValuesT(Stream, reinterpret_cast<double*>(Dst + DstIndex), 2 * int64_t(Len), Precision, Endianness);
}
void ReadBinaryValuesc(std::istream& Stream, TSCplx* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                       TEndianness Endianness) {
    ReadValuesT(Stream, reinterpret_cast<float*>(Dst + DstIndex), 2 * int64_t(Len), Precision, Endianness);
}
int64_t ReadBinaryValues(const uint8_t* Src, double* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                         TEndianness Endianness) {
    if (Len <= 0 || !KnownPrecision(Precision)) return 0;
    DecodeChunk(Src, Len, Precision, Endianness, Dst + DstIndex);
    return int64_t(Len) * SizeOfPrecision(Precision, false);
}
int64_t ReadBinaryValues(const uint8_t* Src, float* Dst, int32_t DstIndex, int32_t Len, TPrecision Precision,
                         TEndianness Endianness) {
    if (Len <= 0 || !KnownPrecision(Precision)) return 0;
    DecodeChunk(Src, Len, Precision, Endianness, Dst + DstIndex);
    return int64_t(Len) * SizeOfPrecision(Precision, false);
}

// ---- raw copies -------------------------------------------------------------
void WriteToStream(std::ostream& Stream, const double* Src, int32_t SrcIndex, int32_t Len, TEndianness Endianness) {
    WriteRaw(Stream, Src + SrcIndex, Len, Endianness);
}
void WriteToStream(std::ostream& Stream, const float* Src, int32_t SrcIndex, int32_t Len, TEndianness Endianness) {
    WriteRaw(Stream, Src + SrcIndex, Len, Endianness);
}
void WriteToStreamc(std::ostream& Stream, const TCplx* Src, int32_t SrcIndex, int32_t Len, TEndianness Endianness) {
    WriteRaw(Stream, reinterpret_cast<const double*>(Src + SrcIndex), 2 * int64_t(Len), Endianness);
}
void WriteToStreamc(std::ostream& Stream, const TSCplx* Src, int32_t SrcIndex, int32_t Len, TEndianness Endianness) {
    WriteRaw(Stream, reinterpret_cast<const float*>(Src + SrcIndex), 2 * int64_t(Len), Endianness);
}
void ReadFromStream(std::istream& Stream, double* Dst, int32_t DstIndex, int32_t Len, TEndianness Endianness) {
    ReadRaw(Stream, Dst + DstIndex, Len, Endianness);
}
void ReadFromStream(std::istream& Stream, float* Dst, int32_t DstIndex, int32_t Len, TEndianness Endianness) {
    ReadRaw(Stream, Dst + DstIndex, Len, Endianness);
}
void ReadFromStreamc(std::istream& Stream, TCplx* Dst, int32_t DstIndex, int32_t Len, TEndianness Endianness) {
    ReadRaw(Stream, reinterpret_cast<double*>(Dst + DstIndex), 2 * int64_t(Len), Endianness);
}
void ReadFromStreamc(std::istream& Stream, TSCplx* Dst, int32_t DstIndex, int32_t Len, TEndianness Endianness) {
    ReadRaw(Stream, reinterpret_cast<float*>(Dst + DstIndex), 2 * int64_t(Len), Endianness);
}

// ---- header arrays and short strings ------------------------------------
void WriteBinaryToStream(std::ostream& Stream, int32_t Count, const float* Floats, TEndianness Endianness) {
    WriteRaw(Stream, Floats, Count, Endianness);
}

bool ReadBinaryFromStream(std::istream& Stream, int32_t Count, float* Floats, TEndianness Endianness) {
    if (Count <= 0) return true;
    if (!ReadBytes(Stream, Floats, int64_t(Count) * 4)) return false;
    if (Endianness == boBigEndian) SwapInPlace<4>(reinterpret_cast<uint8_t*>(Floats), Count);
    return true;
}

bool ReadBinaryFromStream(std::istream& Stream, int32_t Count, TSingleArray& Floats, TEndianness Endianness) {
    if (Count < 0) return false;
    Floats.SetLength(Count);
    return ReadBinaryFromStream(Stream, Count, Floats.data(), Endianness);
}

void WriteShortString(std::ostream& Stream, std::string_view s) {
    if (s.size() > 255) ERaise("WriteShortString: Length(s) > 255");
    const uint8_t n = static_cast<uint8_t>(s.size());
    WriteBytes(Stream, &n, 1);
    WriteBytes(Stream, s.data(), n);
}

bool ReadShortString(std::istream& Stream, std::string& s) {
    s.clear();
    uint8_t n = 0;
    if (!ReadBytes(Stream, &n, 1)) return false;
    std::string t(n, '\0');
    if (!ReadBytes(Stream, t.data(), n)) return false;
    s = std::move(t);
    return true;
}

// ---- plain fields ---------------------------------------------------------
#define ROVANE_FIELD(NAME, T)                                                                     \
    T StreamRead##NAME(std::istream& Stream) { return ReadFieldOrRaise<T>(Stream); }             \
    T StreamRead##NAME(std::istream& Stream, int32_t& BytesRead) { return ReadField<T>(Stream, BytesRead); } \
    void StreamWrite##NAME(std::ostream& Stream, T x) { WriteField(Stream, x); }
ROVANE_FIELD(Int8, int8_t)
ROVANE_FIELD(UInt8, uint8_t)
ROVANE_FIELD(Int16, int16_t)
ROVANE_FIELD(UInt16, uint16_t)
ROVANE_FIELD(Int32, int32_t)
ROVANE_FIELD(UInt32, uint32_t)
ROVANE_FIELD(Int64, int64_t)
ROVANE_FIELD(UInt64, uint64_t)
ROVANE_FIELD(Single, float)
ROVANE_FIELD(Double, double)
#undef ROVANE_FIELD

void StreamWriteString(std::ostream& Stream, std::string_view s) {
    if (s.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        ERaise("StreamWriteString: Length(s) > MaxInt");
    StreamWriteInt32(Stream, static_cast<int32_t>(s.size()));
    WriteBytes(Stream, s.data(), static_cast<int64_t>(s.size()));
}

std::string StreamReadString(std::istream& Stream) {
    const int32_t n = StreamReadInt32(Stream);
    const int64_t left = StreamBytesLeft(Stream);
    if (n < 0 || (left >= 0 && n > left)) ERaiseFmt("StreamReadString: invalid length %d", n);
    std::string s;
    // Without a known length the text grows as it arrives, so that a damaged
    // count cannot reserve memory the stream does not hold.
    constexpr int64_t step = 1 << 20;
    for (int64_t at = 0; at < n;) {
        const int64_t m = std::min<int64_t>(step, n - at);
        s.resize(static_cast<size_t>(at + m));
        if (!ReadBytes(Stream, s.data() + at, m)) ERaise("Stream read error");
        at += m;
    }
    return s;
}

int64_t StreamBytesLeft(std::istream& Stream) {
    if (!Stream.good()) return Stream.eof() ? 0 : -1;
    std::streambuf* sb = Stream.rdbuf();
    if (!sb) return -1;
    const std::streampos bad = std::streampos(std::streamoff(-1));
    const std::streampos cur = sb->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    if (cur == bad) return -1;
    const std::streampos end = sb->pubseekoff(0, std::ios_base::end, std::ios_base::in);
    if (end == bad) return -1;
    sb->pubseekpos(cur, std::ios_base::in);
    return std::max<int64_t>(0, static_cast<int64_t>(end - cur));
}

}  // namespace rovane
