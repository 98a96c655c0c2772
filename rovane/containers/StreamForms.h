// Pieces of the binary stream form and of the text forms that the float
// containers (RovaneStreams.cpp) and the integer containers
// (IntStreams.cpp) share: the header layouts of a vector and of a matrix,
// their checked reading, the length checks of a load, and the list helpers
// of the text forms. Internal to the library; not part of Rovane.h.
#pragma once

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <istream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "rovane/containers/AbstractRovane.h"
#include "rovane/containers/MatrixSettings.h"
#include "rovane/strings/StringVar.h"

namespace rovane {

// Header fields after reading. A vector is one row of Cols elements.
struct TRovane::StreamHeader {
    int32_t Version = RovaneStreamVersion;
    bool Complex = false;
    int64_t Rows = 1, Cols = 0;
    bool ConditionCheck = true;
    bool HasTagAndCaption = false;
    int32_t Tag = 0;
    std::string Caption;
    TPrecision Precision = prDouble;
    // Matrix settings.
    bool AutoMtxType = false, RefineSolution = false, TriangleUnit = false;
    int32_t Balance = btFull, ConditionNumber = cnNone, TriangleForm = tfUpper, SuperDiag = 0, SubDiag = 0;
};

namespace streamforms {

using StreamHeader = TRovane::StreamHeader;

inline constexpr int32_t kTwo23 = 8388608;
inline constexpr int32_t kVecHeaderFloats = 11;
inline constexpr int32_t kMtxHeaderFloats = 26;

inline bool KnownPrecision(int64_t p) { return p >= prDouble && p <= prInt24; }

// ---- headers ----------------------------------------------------------------
// The eleven floats of a vector header from h (Cols is the length; Version,
// Rows and the matrix settings are not used) with the stream precision
// h.Precision and the element size in memory elemSize.
void EncodeVecHeader(const StreamHeader& h, float elemSize, float* f);
// The twenty-six floats of a matrix header; Quadratic is Rows = Cols.
void EncodeMtxHeader(const StreamHeader& h, float elemSize, float* f);
// Header plus caption into the stream.
void WriteHeaderFloats(std::ostream& stream, int32_t count, const float* f, const std::string& caption,
                       TEndianness endianness);
// Reads and checks a header into h without changing any object. cls names
// the class in the texts of the checks of this library ("TVec", "TVecInt").
void ParseVecHeader(std::istream& stream, TEndianness endianness, StreamHeader& h, const char* cls);
void ParseMtxHeader(std::istream& stream, TEndianness endianness, StreamHeader& h, const char* cls);

// ---- loads --------------------------------------------------------------------
// Elements the values of a header take in the stream: Length, and for a
// vector of a version below 104 the two (complex: one) extra elements those
// streams hold.
int64_t StreamElements(const StreamHeader& h, bool vector);
int64_t StreamValueBytes(const StreamHeader& h, bool vector);
// Raises when a stream that can tell its length holds fewer than need bytes.
void CheckRoom(std::istream& s, int64_t need, const char* cls);
// Reads need bytes from a stream that cannot tell its length; the buffer
// grows as the bytes arrive, so a damaged count cannot reserve memory the
// stream does not hold.
std::vector<char> ReadAnnouncedBytes(std::istream& stream, int64_t need, const char* cls);

// Resets FileVersion when ReadValues leaves, also by an exception.
struct FileVersionReset {
    ~FileVersionReset() { FileVersion = -1; }
};

// A read-only stream buffer over bytes already in memory, seekable so that
// the length checks see its size.
class MemoryBuf : public std::streambuf {
public:
    MemoryBuf(char* p, size_t n) { setg(p, p, p + n); }

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;
};

// The values phase of a load, once the header is parsed and checked: a
// stream that tells its length is checked for need bytes, then apply()
// changes the object and readValues(stream) fills it; a stream that cannot
// tell (a pipe) has the need bytes taken first and the values read from
// memory. Either way nothing changes before the bytes are known to be there.
template <class Apply, class ReadValues>
void LoadValuesPhase(std::istream& stream, int64_t need, const char* cls, Apply&& apply, ReadValues&& readValues) {
    if (StreamBytesLeft(stream) >= 0) {
        CheckRoom(stream, need, cls);
        apply();
        readValues(stream);
        return;
    }
    std::vector<char> buf = ReadAnnouncedBytes(stream, need, cls);
    apply();
    MemoryBuf mem(buf.data(), buf.size());
    std::istream values(&mem);
    readValues(values);
}

// ---- text forms ---------------------------------------------------------------
// Next item of s from pos: whole delimiters are skipped, the item runs to the
// next delimiter and pos moves behind it, or to the end. False at the end.
bool NextItem(std::string_view s, size_t& pos, std::string_view delim, std::string_view& item);
// Pads every text to the longest plus 3, before (right align) or after it.
void Pad(std::vector<std::string>& v, TFixedTextAlign align);
// "[i] " in front of each line, the headers padded to one width.
void InsertRowHeaders(std::vector<std::string>& lines, int64_t first);
// Puts line k at list position at + k, replacing or appending.
void PlaceLines(TStringList& dst, int32_t at, const std::vector<std::string>& lines);
// The lines of l joined with "\r\n".
std::string JoinLines(const TStringList& l);

// Runs fn; a failure other than the library's own is raised again as the
// library's text with the line number.
template <class Fn>
void WrapLine(int32_t line, Fn&& fn) {
    try {
        fn();
    } catch (const ERovaneException&) {
        throw;
    } catch (const std::exception& e) {
        ERaiseFmt("When reading line number %d, an error occured: %s.", line, e.what());
    }
}

// Parses listLen lines from listIndex into a listLen x cols block, row by
// row; items missing at the end of a line keep fill. A line with more items
// than cols raises "k > AMtx.Cols-1".
template <class T, class Parse>
std::vector<T> ParseLines(const TStringList& src, int32_t listIndex, int32_t listLen, int32_t cols,
                          std::string_view delimiter, T fill, Parse&& parse) {
    std::vector<T> v(static_cast<size_t>(int64_t(listLen) * cols), fill);
    for (int32_t i = 0; i < listLen; ++i) {
        const std::string& line = src[listIndex + i];
        size_t pos = 0;
        std::string_view item;
        int32_t k = 0;
        while (NextItem(line, pos, delimiter, item)) {
            if (k > cols - 1) ERangeErrorRaise("k > AMtx.Cols-1");
            WrapLine(listIndex + i, [&] { v[static_cast<size_t>(int64_t(i) * cols + k)] = parse(item); });
            ++k;
        }
    }
    return v;
}

}  // namespace streamforms
}  // namespace rovane
