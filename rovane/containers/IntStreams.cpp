// Binary stream form and text forms of the integer containers.
//
// A TVecInt writes the header of a TVec and a TMtxInt the header of a TMtx
// (the layouts, their checks and the load phases are shared with the float
// containers through StreamForms.h), with Complex 0 and the width in bytes as
// the element size in memory. The values follow in a sample format of
// TPrecision: the format of the width (prInteger, prSmallInt, prByte) is a
// raw copy with the byte swap; any other format goes through 64-bit floats,
// which hold every value of every width exactly, and the float sample
// conversion. Reading converts to the present width of the object, rounding
// to nearest and saturating to the width's range; loading keeps the width,
// as a float object keeps its precision.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "rovane/containers/RovaneInt.h"
#include "rovane/containers/StreamForms.h"
#include "rovane/scalars/RovaneUtils.h"
#include "rovane/strings/StringVar.h"

namespace rovane {

using namespace streamforms;

namespace {

// Elements converted per block on the way through 64-bit floats.
constexpr int32_t kBlock = 4096;

bool IsMatrix(const TRovaneInt& o) { return o.fRovaneType == rvTMtxInt; }
const char* ClassName(const TRovaneInt& o) { return IsMatrix(o) ? "TMtxInt" : "TVecInt"; }

// The sample format that stores the width as it is.
TPrecision NativeFormat(TIntPrecision p) { return p == prInt32 ? prInteger : p == prInt16 ? prSmallInt : prByte; }

int64_t WidthMin(TIntPrecision p) { return p == prInt32 ? INT32_MIN : p == prInt16 ? INT16_MIN : 0; }
int64_t WidthMax(TIntPrecision p) { return p == prInt32 ? INT32_MAX : p == prInt16 ? INT16_MAX : UINT8_MAX; }

// A stored value in the width: nearest (ties to even), saturated; NaN is 0.
int32_t ToWidth(double x, TIntPrecision p) {
    if (std::isnan(x)) return 0;
    const double r = std::nearbyint(x);
    if (r <= static_cast<double>(WidthMin(p))) return static_cast<int32_t>(WidthMin(p));
    if (r >= static_cast<double>(WidthMax(p))) return static_cast<int32_t>(WidthMax(p));
    return static_cast<int32_t>(r);
}

void SwapBytes(char* p, int64_t count, int32_t width) {
    if (width == 1) return;
    for (int64_t i = 0; i < count; ++i, p += width) std::reverse(p, p + width);
}

// Raw copies of the range in the width's own format, in blocks so that the
// caller's values are never swapped in place.
void WriteRaw(std::ostream& stream, const TRovaneInt& o, TEndianness endianness) {
    const int32_t w = o.ElemSize();
    const char* src = static_cast<const char*>(o.ValuesPointer);
    if (endianness != boBigEndian || w == 1) {
        stream.write(src, static_cast<std::streamsize>(int64_t(o.fLength) * w));
        return;
    }
    std::vector<char> buf(static_cast<size_t>(kBlock) * w);
    for (int64_t at = 0; at < o.fLength;) {
        const int64_t n = std::min<int64_t>(kBlock, o.fLength - at);
        std::memcpy(buf.data(), src + at * w, static_cast<size_t>(n * w));
        SwapBytes(buf.data(), n, w);
        stream.write(buf.data(), static_cast<std::streamsize>(n * w));
        at += n;
    }
}

void ReadRaw(std::istream& stream, TRovaneInt& o, TEndianness endianness) {
    const int32_t w = o.ElemSize();
    char* dst = static_cast<char*>(o.ValuesPointer);
    const std::streamsize bytes = static_cast<std::streamsize>(int64_t(o.fLength) * w);
    stream.read(dst, bytes);
    if (stream.gcount() != bytes) ERaise("Stream read error");
    if (endianness == boBigEndian) SwapBytes(dst, o.fLength, w);
}

// Any other format: through 64-bit floats.
void WriteConverted(std::ostream& stream, const TRovaneInt& o, TPrecision precision, TRounding rounding,
                    TEndianness endianness) {
    std::vector<double> buf(static_cast<size_t>(std::min<int64_t>(kBlock, o.fLength)));
    for (int32_t at = 0; at < o.fLength;) {
        const int32_t n = std::min(kBlock, o.fLength - at);
        for (int32_t i = 0; i < n; ++i) buf[static_cast<size_t>(i)] = o.GetElement(at + i);
        WriteBinaryValues(stream, buf.data(), 0, n, precision, rounding, endianness);
        at += n;
    }
}

void ReadConverted(std::istream& stream, TRovaneInt& o, TPrecision precision, TEndianness endianness) {
    std::vector<double> buf(static_cast<size_t>(std::min<int64_t>(kBlock, o.fLength)));
    for (int32_t at = 0; at < o.fLength;) {
        const int32_t n = std::min(kBlock, o.fLength - at);
        ReadBinaryValues(stream, buf.data(), 0, n, precision, endianness);
        for (int32_t i = 0; i < n; ++i) o.PutElement(at + i, ToWidth(buf[static_cast<size_t>(i)], o.fIntPrecision));
        at += n;
    }
}

// Reads and checks a header of the object's class into h, changing nothing.
void ParseIntHeader(const TRovaneInt& o, std::istream& stream, TEndianness endianness, StreamHeader& h) {
    if (IsMatrix(o)) ParseMtxHeader(stream, endianness, h, "TMtxInt");
    else ParseVecHeader(stream, endianness, h, "TVecInt");
    if (h.Complex)
        ERaiseFmt("%s.ReadHeader: the stream holds complex values, an integer container can not load them",
                  ClassName(o));
}

// Sizes the object (the step that can refuse: a sub-range) and then takes
// the settings of the header. The width stays.
void ApplyIntHeader(TRovaneInt& o, const StreamHeader& h) {
    if (IsMatrix(o)) {
        auto& m = static_cast<TMtxInt&>(o);
        m.Size(static_cast<int32_t>(h.Rows), static_cast<int32_t>(h.Cols));
        m.fColsBitCount = 0;
    } else {
        o.TRovaneInt::Size(static_cast<int32_t>(h.Cols));
    }
    o.FBitCount = 0;
    if (h.HasTagAndCaption) {
        o.FTag = h.Tag;
        o.FCaption = h.Caption;
    }
    o.fConditionCheck = h.ConditionCheck;
    FileVersion = h.Version;
}

// ---- text ---------------------------------------------------------------------

std::string FormatInt(int32_t v, std::string_view format) {
    return format.empty() ? std::to_string(v) : FormatSample(format, static_cast<double>(v));
}

// One integer of the width from text; a value outside the width raises
// rather than wrapping.
int32_t ParseInt(std::string_view item, TIntPrecision p) {
    const int32_t v = StrToInteger(item);
    if (v < WidthMin(p) || v > WidthMax(p))
        throw std::out_of_range("'" + std::string(item) + "' lies outside " + std::to_string(WidthMin(p)) + ".." +
                                std::to_string(WidthMax(p)) + ", the range of the width");
    return v;
}

}  // namespace

// ===========================================================================
// TRovaneInt: binary form
// ===========================================================================
void TRovaneInt::WriteHeader(std::ostream& stream, TPrecision precision, TRounding /*rounding*/,
                             TEndianness endianness) {
    if (!KnownPrecision(precision)) ERaiseFmt("%s.WriteHeader: unknown precision %d", ClassName(*this), precision);
    if (FCaption.size() > 255) ERaise("WriteShortString: Length(s) > 255");
    StreamHeader h;
    h.ConditionCheck = fConditionCheck;
    h.Precision = precision;
    h.Tag = FTag;
    const auto elemSize = static_cast<float>(ElemSize());
    if (IsMatrix(*this)) {
        const auto& m = static_cast<const TMtxInt&>(*this);
        h.Rows = m.FRows;
        h.Cols = m.FCols;
        float f[kMtxHeaderFloats];
        EncodeMtxHeader(h, elemSize, f);
        WriteHeaderFloats(stream, kMtxHeaderFloats, f, FCaption, endianness);
    } else {
        h.Cols = fLength;
        float f[kVecHeaderFloats];
        EncodeVecHeader(h, elemSize, f);
        WriteHeaderFloats(stream, kVecHeaderFloats, f, FCaption, endianness);
    }
}

void TRovaneInt::WriteHeader(std::ostream& stream) {
    WriteHeader(stream, NativeFormat(fIntPrecision), rnTrunc, boLittleEndian);
}

TPrecision TRovaneInt::ReadHeader(std::istream& stream, TEndianness endianness) {
    StreamHeader h;
    ParseIntHeader(*this, stream, endianness, h);
    CheckRoom(stream, StreamValueBytes(h, !IsMatrix(*this)), ClassName(*this));
    ApplyIntHeader(*this, h);
    return h.Precision;
}

void TRovaneInt::WriteValues(std::ostream& stream, TPrecision precision, TRounding rounding,
                             TEndianness endianness) const {
    if (fLength <= 0) return;
    if (precision == NativeFormat(fIntPrecision)) WriteRaw(stream, *this, endianness);
    else WriteConverted(stream, *this, precision, rounding, endianness);
}

void TRovaneInt::WriteValues(std::ostream& stream) const {
    WriteValues(stream, NativeFormat(fIntPrecision), rnTrunc, boLittleEndian);
}

int64_t TRovaneInt::ReadValues(std::istream& stream, TPrecision precision, TEndianness endianness) {
    FileVersionReset reset;
    if (fLength == 0) return 0;
    if (!KnownPrecision(precision)) ERaiseFmt("%s.ReadValues: unknown precision %d", ClassName(*this), precision);
    // Vector streams of versions below 104 hold two elements more than
    // Length; they are read and dropped.
    const bool old = !IsMatrix(*this) && FileVersion != -1 && FileVersion < 104;
    const int32_t extra = old ? 2 : 0;
    const int64_t need = (int64_t(fLength) + extra) * SizeOfPrecision(precision, false);
    const int64_t left = StreamBytesLeft(stream);
    if (left >= 0 && left < need)
        ERaiseFmt("%s.ReadValues: stream too short: %d bytes of values needed, %d are left", ClassName(*this), need,
                  left);
    if (precision == NativeFormat(fIntPrecision)) ReadRaw(stream, *this, endianness);
    else ReadConverted(stream, *this, precision, endianness);
    if (extra > 0) {
        double drop[2];
        ReadBinaryValues(stream, drop, 0, extra, precision, endianness);
    }
    return int64_t(fLength) + extra;
}

void TRovaneInt::SaveToStream(std::ostream& stream) {
    WriteHeader(stream, NativeFormat(fIntPrecision), rnTrunc, boLittleEndian);
    WriteValues(stream, NativeFormat(fIntPrecision), rnTrunc, boLittleEndian);
}

void TRovaneInt::LoadFromStream(std::istream& stream) {
    StreamHeader h;
    ParseIntHeader(*this, stream, boLittleEndian, h);
    LoadValuesPhase(
        stream, StreamValueBytes(h, !IsMatrix(*this)), ClassName(*this), [&] { ApplyIntHeader(*this, h); },
        [&](std::istream& values) { ReadValues(values, h.Precision, boLittleEndian); });
}

void TRovaneInt::SaveToFile(const std::string& fileName, bool append) {
    std::ofstream f(fileName, std::ios::binary | std::ios::out | (append ? std::ios::app : std::ios::trunc));
    if (!f) ERaiseFmt("%s.SaveToFile: cannot open file \"%s\"", ClassName(*this), fileName);
    SaveToStream(f);
    f.close();
    if (!f) ERaiseFmt("%s.SaveToFile: error writing file \"%s\"", ClassName(*this), fileName);
}

void TRovaneInt::LoadFromFile(const std::string& fileName) {
    std::ifstream f(fileName, std::ios::binary | std::ios::in);
    if (!f) ERaiseFmt("%s.LoadFromFile: cannot open file \"%s\"", ClassName(*this), fileName);
    LoadFromStream(f);
}

// ===========================================================================
// TVecInt: text forms
// ===========================================================================
void TVecInt::ValuesToStrings(TStringList& dst) const {
    dst.Clear();
    ValuesToStrings(dst, 0, 0, -1);
}

void TVecInt::ValuesToStrings(TStringList& dst, int32_t listIndex, int32_t index, int32_t len, TFixedTextAlign align,
                              std::string_view format, bool headers) const {
    TRovaneBase::ValidateParams(index, len);
    if (listIndex < 0) ERangeErrorRaiseFmt("TVecInt.ValuesToStrings: ListIndex < 0 (%d)", listIndex);
    // Range checks may be off: a range outside the object formats nothing
    // rather than reading beyond it.
    if (index < 0 || len < 0 || int64_t(index) + len > fLength) return;
    std::vector<std::string> lines(static_cast<size_t>(len));
    for (int32_t i = 0; i < len; ++i) lines[static_cast<size_t>(i)] = FormatInt(GetElement(index + i), format);
    Pad(lines, align);
    if (headers) InsertRowHeaders(lines, index);
    PlaceLines(dst, listIndex, lines);
}

std::string TVecInt::ValuesToText(std::string_view format) const {
    TStringList l;
    ValuesToStrings(l, 0, 0, -1, ftaNone, format, false);
    return JoinLines(l);
}

TVecInt& TVecInt::StringsToValues(const TStringList& src) {
    std::vector<int32_t> v(static_cast<size_t>(src.Count()));
    for (int32_t i = 0; i < src.Count(); ++i)
        WrapLine(i, [&] { v[static_cast<size_t>(i)] = ParseInt(src[i], fIntPrecision); });
    Size(src.Count());
    for (int32_t i = 0; i < src.Count(); ++i) PutElement(i, v[static_cast<size_t>(i)]);
    return *this;
}

TVecInt& TVecInt::StringsToValues(const TStringList& src, int32_t listIndex, int32_t index, int32_t len) {
    if (len == -1) len = src.Count() - listIndex;
    if (fConditionCheck) {
        if (int64_t(index) + len > fLength) ERangeErrorRaise("(Index + Len) > fLength");
        if (int64_t(listIndex) + len > src.Count()) ERangeErrorRaise("ListIndex + Len > aList.Count");
    }
    if (index < 0 || listIndex < 0 || len < 0 || int64_t(index) + len > fLength ||
        int64_t(listIndex) + len > src.Count())
        ERangeErrorRaiseFmt("TVecInt.StringsToValues: Index: %d, ListIndex: %d, Len: %d, Length: %d", index,
                            listIndex, len, fLength);
    std::vector<int32_t> v(static_cast<size_t>(len));
    for (int32_t i = 0; i < len; ++i)
        WrapLine(listIndex + i, [&] { v[static_cast<size_t>(i)] = ParseInt(src[listIndex + i], fIntPrecision); });
    for (int32_t i = 0; i < len; ++i) PutElement(index + i, v[static_cast<size_t>(i)]);
    return *this;
}

TVecInt& TVecInt::TextToValues(std::string_view text) {
    TStringList l;
    l.SetText(text);
    return StringsToValues(l);
}

// ===========================================================================
// TMtxInt: text forms and Matrix Market file
// ===========================================================================
void TMtxInt::ValuesToStrings(TStringList& dst, std::string_view delimiter) const {
    dst.Clear();
    if (FRows == 0 || FCols == 0) return;
    ValuesToStrings(dst, 0, 0, FRows, FCols, delimiter);
}

void TMtxInt::ValuesToStrings(TStringList& dst, int32_t row, int32_t col, int32_t rowCount, int32_t colCount,
                              std::string_view delimiter, TFixedTextAlign align, std::string_view format,
                              bool headers) const {
    if (fConditionCheck) {
        if (row < 0 || row >= FRows) ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Row < FRows");
        if (col < 0 || col >= FCols) ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Col < FCols");
        if (rowCount < 0 || int64_t(row) + rowCount > FRows)
            ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Row + RowCount <= FRows");
        if (colCount < 0 || int64_t(col) + colCount > FCols)
            ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Col + ColCount <= FCols");
    }
    if (row < 0 || col < 0 || rowCount < 0 || colCount < 0 || int64_t(row) + rowCount > FRows ||
        int64_t(col) + colCount > FCols)
        return;
    std::vector<std::string> cells(static_cast<size_t>(int64_t(rowCount) * colCount));
    for (int32_t r = 0; r < rowCount; ++r)
        for (int32_t c = 0; c < colCount; ++c)
            cells[static_cast<size_t>(int64_t(r) * colCount + c)] = FormatInt(GetElement(row + r, col + c), format);
    Pad(cells, align);
    std::vector<std::string> lines(static_cast<size_t>(rowCount));
    for (int32_t r = 0; r < rowCount; ++r) {
        std::string& l = lines[static_cast<size_t>(r)];
        for (int32_t c = 0; c < colCount; ++c) {
            if (c) l += delimiter;
            l += cells[static_cast<size_t>(int64_t(r) * colCount + c)];
        }
    }
    if (headers) InsertRowHeaders(lines, row);
    PlaceLines(dst, 0, lines);
}

std::string TMtxInt::ValuesToText(std::string_view delimiter, std::string_view format) const {
    TStringList l;
    if (FRows > 0 && FCols > 0) ValuesToStrings(l, 0, 0, FRows, FCols, delimiter, ftaNone, format);
    return JoinLines(l);
}

TMtxInt& TMtxInt::StringsToValues(const TStringList& src, std::string_view delimiter) {
    if (src.Count() == 0) {
        Size(0, 0);
        return *this;
    }
    const int32_t cols = ColumnCount(src, 0, delimiter);
    if (int64_t(src.Count()) * cols > INT32_MAX)
        ERangeErrorRaiseFmt("TMtxInt.StringsToValues: Rows * Cols > MaxInt (%d * %d)", src.Count(), cols);
    const TIntPrecision p = fIntPrecision;
    const std::vector<int32_t> v = ParseLines<int32_t>(src, 0, src.Count(), cols, delimiter, 0,
                                                       [p](std::string_view item) { return ParseInt(item, p); });
    Size(src.Count(), cols);
    for (int32_t i = 0; i < fLength; ++i) TRovaneInt::PutElement(i, v[static_cast<size_t>(i)]);
    return *this;
}

TMtxInt& TMtxInt::StringsToValues(const TStringList& src, int32_t listIndex, int32_t listLen, int32_t row,
                                  int32_t col, std::string_view delimiter) {
    if (listLen == -1) listLen = src.Count() - listIndex;
    const int32_t cols = ColumnCount(src, listIndex, delimiter);
    if (fConditionCheck) {
        if (int64_t(row) + listLen > FRows) ERangeErrorRaise("(Row + ListLen - 1) > fRows");
        if (int64_t(col) + cols > FCols) ERangeErrorRaise("(Col + ColumnCount) > fCols");
        if (int64_t(listIndex) + listLen > src.Count()) ERangeErrorRaise("(ListIndex + ListLen - 1) > aList.Count");
    }
    if (row < 0 || col < 0 || listLen < 0 || int64_t(row) + listLen > FRows || int64_t(col) + cols > FCols ||
        int64_t(listIndex) + listLen > src.Count())
        ERangeErrorRaiseFmt("TMtxInt.StringsToValues: Row: %d, Col: %d, ListIndex: %d, ListLen: %d", row, col,
                            listIndex, listLen);
    const TIntPrecision p = fIntPrecision;
    const std::vector<int32_t> v = ParseLines<int32_t>(src, listIndex, listLen, cols, delimiter, 0,
                                                       [p](std::string_view item) { return ParseInt(item, p); });
    for (int32_t r = 0; r < listLen; ++r)
        for (int32_t c = 0; c < cols; ++c) PutElement(row + r, col + c, v[static_cast<size_t>(int64_t(r) * cols + c)]);
    return *this;
}

TMtxInt& TMtxInt::TextToValues(std::string_view text, std::string_view delimiter) {
    TStringList l;
    l.SetText(text);
    return StringsToValues(l, delimiter);
}

void TMtxInt::SaveToMatrixMarketFile(const std::string& fileName) const {
    std::ofstream f(fileName, std::ios::binary | std::ios::out | std::ios::trunc);
    if (!f) ERaiseFmt("TMtxInt.SaveToMatrixMarketFile: cannot open file \"%s\"", fileName);
    std::string text = "%%MatrixMarket matrix array integer general\n%Created with Rovane version 6.06\n";
    text += std::to_string(FRows) + " " + std::to_string(FCols) + "\n";
    for (int32_t c = 0; c < FCols; ++c)
        for (int32_t r = 0; r < FRows; ++r) {
            text += std::to_string(GetElement(r, c));
            text += '\n';
        }
    f.write(text.data(), static_cast<std::streamsize>(text.size()));
    f.close();
    if (!f) ERaiseFmt("TMtxInt.SaveToMatrixMarketFile: error writing file \"%s\"", fileName);
}

}  // namespace rovane
