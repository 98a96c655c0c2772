// Binary stream form and text forms of the dense containers.
//
// Loading is two-phase: the header is read and checked into a StreamHeader
// without touching the object, the byte count of the values it announces is
// checked against what the stream still holds, and only then is the object
// sized and filled. A stream that cannot tell its length (a pipe) has the
// announced bytes read into a buffer first. So a damaged, short or foreign
// stream raises and the object keeps its previous state.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <istream>
#include <limits>
#include <ostream>
#include <streambuf>
#include <vector>

#include "rovane/containers/Rovane.h"
#include "rovane/containers/StreamForms.h"
#include "rovane/scalars/RovaneUtils.h"
#include "rovane/strings/StringVar.h"

namespace rovane {

namespace streamforms {

// The integer a header field holds. A damaged header can hold anything, so a
// value that is not finite or lies beyond the 32-bit range is refused.
int64_t Field(const float* f, int32_t index, const char* cls) {
    const float v = f[index];
    if (!std::isfinite(v) || std::fabs(v) > 2147483647.0f)
        ERaiseFmt("%s.ReadHeader: header field %d holds %s, not a valid value", cls, index, SampleToStrf(v));
    return static_cast<int64_t>(std::nearbyint(v));
}

// The high part of a size: streams of old versions hold anything there, so a
// negative or NaN value counts as 0.
int64_t HighPart(const float* f, int32_t index, const char* cls) {
    if (std::isnan(f[index]) || f[index] < 0) return 0;
    return Field(f, index, cls);
}

int64_t CheckedCode(const float* f, int32_t index, const char* cls, int64_t lo, int64_t hi) {
    const int64_t v = Field(f, index, cls);
    if (v < lo || v > hi)
        ERaiseFmt("%s.ReadHeader: header field %d holds %d, outside %d..%d", cls, index, v, lo, hi);
    return v;
}

// The format version at index `vi`, the signature at index `si`. A version
// above 104 needs the signature; a field that cannot be a version at all
// (not finite, beyond 32 bits) marks a stream of another producer, and so
// does a missing signature. A version beyond the one this library writes is
// refused, and so is 0 or below: no writer produced it, and a matrix header
// (whose index 5 is reserved, 0) would otherwise pass for an old vector.
int32_t ReadVersion(const float* f, int32_t vi, int32_t si, const char* cls, const char* signatureText) {
    if (!std::isfinite(f[vi]) || std::fabs(f[vi]) > 2147483647.0f) ERaise(signatureText);
    const int64_t version = static_cast<int64_t>(std::nearbyint(f[vi]));
    if (version > 104 && (!std::isfinite(f[si]) || std::nearbyint(f[si]) != RovaneStreamSignature))
        ERaise(signatureText);
    if (version < 1 || version > RovaneStreamVersion)
        ERaiseFmt("%s.ReadHeader: stream format version %d is not supported (1 to %d)", cls, version,
                  RovaneStreamVersion);
    return static_cast<int32_t>(version);
}

int64_t StreamElements(const StreamHeader& h, bool vector) {
    int64_t n = h.Rows * h.Cols;
    if (vector && h.Version < 104 && n > 0) n += 2 - (h.Complex ? 1 : 0);
    return n;
}

int64_t StreamValueBytes(const StreamHeader& h, bool vector) {
    return StreamElements(h, vector) * SizeOfPrecision(h.Precision, h.Complex);
}

void CheckRoom(std::istream& s, int64_t need, const char* cls) {
    const int64_t left = StreamBytesLeft(s);
    if (left >= 0 && left < need)
        ERaiseFmt("%s.ReadHeader: stream too short: the header announces %d bytes of values, %d are left", cls, need,
                  left);
}

// ---- text helpers ------------------------------------------------------------

bool NextItem(std::string_view s, size_t& pos, std::string_view delim, std::string_view& item) {
    if (delim.empty()) EInvalidArgumentRaise("Delimiter = ''");
    while (pos < s.size() && s.compare(pos, delim.size(), delim) == 0) pos += delim.size();
    if (pos >= s.size()) return false;
    const size_t e = s.find(delim, pos);
    if (e == std::string_view::npos) {
        item = s.substr(pos);
        pos = s.size();
    } else {
        item = s.substr(pos, e - pos);
        pos = e + delim.size();
    }
    return true;
}

void Pad(std::vector<std::string>& v, TFixedTextAlign align) {
    if (align == ftaNone) return;
    size_t w = 0;
    for (const std::string& s : v) w = std::max(w, s.size());
    w += 3;
    for (std::string& s : v) {
        const std::string blanks(w - s.size(), ' ');
        s = align == ftaRightAlign ? blanks + s : s + blanks;
    }
}

void InsertRowHeaders(std::vector<std::string>& lines, int64_t first) {
    size_t w = 0;
    for (size_t i = 0; i < lines.size(); ++i)
        w = std::max(w, std::to_string(first + static_cast<int64_t>(i)).size() + 2);
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string h(1, '[');
        h += std::to_string(first + static_cast<int64_t>(i));
        h += ']';
        h.resize(w + 1, ' ');
        lines[i] = h + lines[i];
    }
}

void PlaceLines(TStringList& dst, int32_t at, const std::vector<std::string>& lines) {
    dst.BeginUpdate();
    try {
        for (size_t k = 0; k < lines.size(); ++k) {
            const int64_t p = int64_t(at) + static_cast<int64_t>(k);
            if (p < dst.Count()) dst.Put(static_cast<int32_t>(p), lines[k]);
            else dst.Add(lines[k]);
        }
    } catch (...) {
        dst.EndUpdate();
        throw;
    }
    dst.EndUpdate();
}

std::string JoinLines(const TStringList& l) {
    std::string s;
    for (int32_t i = 0; i < l.Count(); ++i) {
        if (i) s += "\r\n";
        s += l[i];
    }
    return s;
}

// ---- headers -------------------------------------------------------------------

void EncodeVecHeader(const StreamHeader& h, float elemSize, float* f) {
    std::fill(f, f + kVecHeaderFloats, 0.0f);
    f[0] = h.Complex ? 1.0f : 0.0f;
    f[1] = static_cast<float>(h.Cols % kTwo23);
    f[3] = h.ConditionCheck ? 1.0f : 0.0f;
    f[4] = static_cast<float>(h.Precision);
    f[5] = static_cast<float>(RovaneStreamVersion);
    f[6] = elemSize;
    f[7] = static_cast<float>(h.Tag);
    f[8] = static_cast<float>(RovaneStreamSignature);
    // The high part of the length is cleared: the vector header keeps the
    // low 23 bits of the length alone, as the format stands.
    f[9] = 0.0f;
    f[10] = 0.0f;
}

void EncodeMtxHeader(const StreamHeader& h, float elemSize, float* f) {
    std::fill(f, f + kMtxHeaderFloats, 0.0f);
    f[0] = h.Complex ? 1.0f : 0.0f;
    f[1] = static_cast<float>(h.Rows % kTwo23);
    f[2] = static_cast<float>(h.Cols % kTwo23);
    f[3] = h.Rows == h.Cols ? 1.0f : 0.0f;
    f[4] = h.AutoMtxType ? 1.0f : 0.0f;
    f[6] = static_cast<float>(h.Balance);
    f[7] = h.ConditionCheck ? 1.0f : 0.0f;
    f[8] = static_cast<float>(h.ConditionNumber);
    f[9] = static_cast<float>(h.Precision);
    f[10] = h.RefineSolution ? 1.0f : 0.0f;
    f[11] = static_cast<float>(h.TriangleForm);
    f[12] = h.TriangleUnit ? 1.0f : 0.0f;
    f[13] = static_cast<float>(h.SuperDiag);
    f[14] = static_cast<float>(h.SubDiag);
    f[15] = elemSize;
    f[16] = static_cast<float>(RovaneStreamVersion);
    f[17] = static_cast<float>(h.Tag);
    f[18] = static_cast<float>(RovaneStreamSignature);
    f[19] = static_cast<float>(h.Rows / kTwo23);
    f[20] = static_cast<float>(h.Cols / kTwo23);
}

void WriteHeaderFloats(std::ostream& stream, int32_t count, const float* f, const std::string& caption,
                       TEndianness endianness) {
    WriteBinaryToStream(stream, count, f, endianness);
    WriteShortString(stream, caption);
}

void ParseVecHeader(std::istream& stream, TEndianness endianness, StreamHeader& h, const char* cls) {
    float f[kVecHeaderFloats];
    if (!ReadBinaryFromStream(stream, kVecHeaderFloats, f, endianness)) ERaise("Error reading stream!");
    h.Version = ReadVersion(f, 5, 8, cls,
                            "The specified (file) stream does not appear to have been produced by Rovane!");
    if (h.Version > 104) {
        h.Tag = static_cast<int32_t>(Field(f, 7, cls));
        h.HasTagAndCaption = true;
        if (!ReadShortString(stream, h.Caption)) ERaise("Error reading stream!");
    }
    h.Complex = Field(f, 0, cls) != 0;
    const int64_t len = (HighPart(f, 9, cls) << 23) + Field(f, 1, cls);
    if (len < 0) ERaiseFmt("%s.ReadHeader: Length < 0 (%d)", cls, len);
    if (len > std::numeric_limits<int32_t>::max()) ERaiseFmt("%s.ReadHeader: Length > MaxInt (%d)", cls, len);
    h.Rows = 1;
    h.Cols = len;
    h.ConditionCheck = Field(f, 3, cls) != 0;
    h.Precision = static_cast<TPrecision>(CheckedCode(f, 4, cls, prDouble, prInt24));
}

void ParseMtxHeader(std::istream& stream, TEndianness endianness, StreamHeader& h, const char* cls) {
    float f[kMtxHeaderFloats];
    if (!ReadBinaryFromStream(stream, kMtxHeaderFloats, f, endianness)) ERaise("TMtx: Error reading stream!");
    h.Version = ReadVersion(f, 16, 18, cls,
                            "The specified (file) stream does not appear to be have been produced by Rovane!");
    if (h.Version > 104) {
        h.Tag = static_cast<int32_t>(Field(f, 17, cls));
        h.HasTagAndCaption = true;
        if (!ReadShortString(stream, h.Caption)) ERaise("TMtx: Error reading stream!");
    }
    h.Complex = Field(f, 0, cls) != 0;
    h.Rows = (HighPart(f, 19, cls) << 23) + Field(f, 1, cls);
    h.Cols = (HighPart(f, 20, cls) << 23) + Field(f, 2, cls);
    if (h.Rows < 0 || h.Cols < 0) ERaiseFmt("%s.ReadHeader: Rows < 0 or Cols < 0 (%d, %d)", cls, h.Rows, h.Cols);
    if (h.Rows > std::numeric_limits<int32_t>::max() || h.Cols > std::numeric_limits<int32_t>::max() ||
        h.Rows * h.Cols > std::numeric_limits<int32_t>::max())
        ERaiseFmt("%s.ReadHeader: Rows * Cols > MaxInt (%d * %d)", cls, h.Rows, h.Cols);
    h.AutoMtxType = Field(f, 4, cls) != 0;
    h.Balance = static_cast<int32_t>(CheckedCode(f, 6, cls, btNone, btFull));
    h.ConditionCheck = Field(f, 7, cls) != 0;
    h.ConditionNumber = static_cast<int32_t>(CheckedCode(f, 8, cls, cnNone, cnNormInf));
    h.Precision = static_cast<TPrecision>(CheckedCode(f, 9, cls, prDouble, prInt24));
    h.RefineSolution = Field(f, 10, cls) != 0;
    h.TriangleForm = static_cast<int32_t>(CheckedCode(f, 11, cls, tfLower, tfUpper));
    h.TriangleUnit = Field(f, 12, cls) != 0;
    h.SuperDiag = static_cast<int32_t>(CheckedCode(f, 13, cls, 0, std::numeric_limits<int32_t>::max()));
    h.SubDiag = static_cast<int32_t>(CheckedCode(f, 14, cls, 0, std::numeric_limits<int32_t>::max()));
}

std::vector<char> ReadAnnouncedBytes(std::istream& stream, int64_t need, const char* cls) {
    std::vector<char> buf;
    constexpr int64_t step = int64_t(1) << 24;
    for (int64_t at = 0; at < need;) {
        const int64_t m = std::min(step, need - at);
        buf.resize(static_cast<size_t>(at + m));
        stream.read(buf.data() + at, static_cast<std::streamsize>(m));
        if (stream.gcount() != static_cast<std::streamsize>(m))
            ERaiseFmt("%s.ReadHeader: stream too short: the header announces %d bytes of values, %d are left", cls,
                      need, at + static_cast<int64_t>(stream.gcount()));
        at += m;
    }
    return buf;
}

MemoryBuf::pos_type MemoryBuf::seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode which) {
    if (!(which & std::ios_base::in)) return pos_type(off_type(-1));
    off_type base = dir == std::ios_base::beg ? 0 : dir == std::ios_base::cur ? gptr() - eback() : egptr() - eback();
    const off_type to = base + off;
    if (to < 0 || to > egptr() - eback()) return pos_type(off_type(-1));
    setg(eback(), eback() + to, egptr());
    return pos_type(to);
}
MemoryBuf::pos_type MemoryBuf::seekpos(pos_type pos, std::ios_base::openmode which) {
    return seekoff(off_type(pos), std::ios_base::beg, which);
}

}  // namespace streamforms

using namespace streamforms;

namespace {

const char* ClassName(const TRovane& o) { return o.fRovaneType == rvTMtx ? "TMtx" : "TVec"; }

std::string FormatValue(const TRovane& o, int64_t i, std::string_view re, std::string_view im) {
    const bool general = re.empty() && im.empty();
    if (o.fComplex) {
        if (o.fIsDouble) {
            const TCplx z = o.CData[o.FCDataOffset + i];
            return general ? CplxToStr(z) : FormatCplx(z, re, im);
        }
        const TSCplx z = o.SCData[o.FCDataOffset + i];
        return general ? CplxToStr(z) : FormatCplx(z, re, im);
    }
    if (o.fIsDouble) return FormatSample(re, o.SData[o.FDataOffset + i]);
    const float x = o.SSData[o.FDataOffset + i];
    return re.empty() ? SampleToStrf(x) : FormatSample(re, x);
}

// One parsed item in the object's precision, kept as a complex double (a
// single value converts exactly).
TCplx ParseItem(std::string_view item, bool complex, bool isDouble) {
    if (complex) return isDouble ? StrToCplx(item) : TCplx(StrToCplxSingle(item));
    return TCplx(isDouble ? StrToVal(item) : static_cast<double>(StrToSingle(item)), 0.0);
}

// Stores values[k] (k from 0) into elements at.. of the object.
void StoreValues(TRovane& o, int64_t at, const TCplx* v, int64_t n) {
    for (int64_t k = 0; k < n; ++k) {
        const int64_t i = at + k;
        if (o.fComplex) {
            if (o.fIsDouble) o.CData[o.FCDataOffset + i] = v[k];
            else o.SCData[o.FCDataOffset + i] = TSCplx(static_cast<float>(v[k].Re), static_cast<float>(v[k].Im));
        } else {
            if (o.fIsDouble) o.SData[o.FDataOffset + i] = v[k].Re;
            else o.SSData[o.FDataOffset + i] = static_cast<float>(v[k].Re);
        }
    }
}

}  // namespace

// ===========================================================================
// TRovane: binary form
// ===========================================================================
void TRovane::WriteHeader(std::ostream& stream, TPrecision precision, TRounding /*rounding*/,
                          TEndianness endianness) {
    if (!KnownPrecision(precision)) ERaiseFmt("%s.WriteHeader: unknown precision %d", ClassName(*this), precision);
    if (FCaption.size() > 255) ERaise("WriteShortString: Length(s) > 255");
    WriteStreamHeader(stream, precision, endianness);
}

void TRovane::WriteHeader(std::ostream& stream) {
    WriteHeader(stream, fIsDouble ? prDouble : prSingle, rnTrunc, boLittleEndian);
}

TPrecision TRovane::ReadHeader(std::istream& stream, TEndianness endianness) {
    StreamHeader h;
    ParseStreamHeader(stream, endianness, h);
    CheckRoom(stream, StreamValueBytes(h, fRovaneType == rvTVec), ClassName(*this));
    ApplyStreamHeader(stream, h);
    return h.Precision;
}

void TRovane::WriteValues(std::ostream& stream, TPrecision precision, TRounding rounding,
                          TEndianness endianness) const {
    if (fLength <= 0) return;
    if (fComplex) {
        if (fIsDouble) WriteBinaryValuesc(stream, CData, FCDataOffset, fLength, precision, rounding, endianness);
        else WriteBinaryValuesc(stream, SCData, FCDataOffset, fLength, precision, rounding, endianness);
    } else {
        if (fIsDouble) WriteBinaryValues(stream, SData, FDataOffset, fLength, precision, rounding, endianness);
        else WriteBinaryValues(stream, SSData, FDataOffset, fLength, precision, rounding, endianness);
    }
}

void TRovane::WriteValues(std::ostream& stream) const {
    WriteValues(stream, fIsDouble ? prDouble : prSingle, rnTrunc, boLittleEndian);
}

int64_t TRovane::ReadValues(std::istream& stream, TPrecision precision, TEndianness endianness) {
    FileVersionReset reset;
    if (fLength == 0) return 0;
    if (!KnownPrecision(precision)) ERaiseFmt("%s.ReadValues: unknown precision %d", ClassName(*this), precision);
    // Streams of versions below 104 hold Length + 2 - Complex elements; the
    // object has room for Length, so the extra ones are read and dropped.
    const bool old = fRovaneType == rvTVec && FileVersion != -1 && FileVersion < 104;
    const int32_t extra = old ? 2 - (fComplex ? 1 : 0) : 0;
    const int64_t need = (int64_t(fLength) + extra) * SizeOfPrecision(precision, fComplex);
    const int64_t left = StreamBytesLeft(stream);
    if (left >= 0 && left < need)
        ERaiseFmt("%s.ReadValues: stream too short: %d bytes of values needed, %d are left", ClassName(*this), need,
                  left);
    if (fComplex) {
        if (fIsDouble) ReadBinaryValuesc(stream, CData, FCDataOffset, fLength, precision, endianness);
        else ReadBinaryValuesc(stream, SCData, FCDataOffset, fLength, precision, endianness);
    } else {
        if (fIsDouble) ReadBinaryValues(stream, SData, FDataOffset, fLength, precision, endianness);
        else ReadBinaryValues(stream, SSData, FDataOffset, fLength, precision, endianness);
    }
    if (extra > 0) {
        TCplx drop[2];
        ReadBinaryValues(stream, reinterpret_cast<double*>(drop), 0, extra * (fComplex ? 2 : 1), precision,
                         endianness);
    }
    return int64_t(fLength) + extra;
}

void TRovane::SaveToStream(std::ostream& stream) {
    WriteHeader(stream, fPrecision, fRounding, boLittleEndian);
    WriteValues(stream, fPrecision, fRounding, boLittleEndian);
}

void TRovane::LoadFromStream(std::istream& stream) {
    StreamHeader h;
    ParseStreamHeader(stream, boLittleEndian, h);
    LoadValuesPhase(
        stream, StreamValueBytes(h, fRovaneType == rvTVec), ClassName(*this), [&] { ApplyStreamHeader(stream, h); },
        [&](std::istream& values) { ReadValues(values, h.Precision, boLittleEndian); });
}

void TRovane::SaveToFile(const std::string& fileName, bool append) {
    std::ofstream f(fileName, std::ios::binary | std::ios::out | (append ? std::ios::app : std::ios::trunc));
    if (!f) ERaiseFmt("%s.SaveToFile: cannot open file \"%s\"", ClassName(*this), fileName);
    SaveToStream(f);
    f.close();
    if (!f) ERaiseFmt("%s.SaveToFile: error writing file \"%s\"", ClassName(*this), fileName);
}

void TRovane::LoadFromFile(const std::string& fileName) {
    std::ifstream f(fileName, std::ios::binary | std::ios::in);
    if (!f) ERaiseFmt("%s.LoadFromFile: cannot open file \"%s\"", ClassName(*this), fileName);
    LoadFromStream(f);
}

void TRovane::SaveBinaryStream(std::ostream& stream) { SaveToStream(stream); }
void TRovane::LoadBinaryStream(std::istream& stream) { LoadFromStream(stream); }

void TRovane::DefineProperties(TFiler& filer) {
    filer.DefineBinaryProperty(
        "DataValues", [this](std::istream& s) { LoadBinaryStream(s); }, [this](std::ostream& s) { SaveBinaryStream(s); },
        true);
}

void TRovane::InternalWriteHeader(std::ostream&) {}
void TRovane::InternalReadHeader(std::istream&) {}

void TRovane::WriteStreamHeader(std::ostream&, TPrecision, TEndianness) {
    ERaise("TRovane.WriteHeader: this class has no stream header");
}
void TRovane::ParseStreamHeader(std::istream&, TEndianness, StreamHeader&) const {
    ERaise("TRovane.ReadHeader: this class has no stream header");
}
void TRovane::ApplyStreamHeader(std::istream&, const StreamHeader&) {
    ERaise("TRovane.ReadHeader: this class has no stream header");
}

// ===========================================================================
// TVec: header
// ===========================================================================
void TVec::WriteStreamHeader(std::ostream& stream, TPrecision precision, TEndianness endianness) {
    StreamHeader h;
    h.Complex = fComplex;
    h.Cols = fLength;
    h.ConditionCheck = fConditionCheck;
    h.Precision = precision;
    h.Tag = FTag;
    float f[kVecHeaderFloats];
    EncodeVecHeader(h, fIsDouble ? 8.0f : 4.0f, f);
    WriteHeaderFloats(stream, kVecHeaderFloats, f, FCaption, endianness);
    InternalWriteHeader(stream);
}

void TVec::ParseStreamHeader(std::istream& stream, TEndianness endianness, StreamHeader& h) const {
    ParseVecHeader(stream, endianness, h, "TVec");
}

void TVec::ApplyStreamHeader(std::istream& stream, const StreamHeader& h) {
    // Sizing is the step that can refuse (a sub-range, a precision lock); it
    // comes first so that a refusal leaves the object as it was.
    Size(static_cast<int32_t>(h.Cols), h.Complex ? (fIsDouble ? rvDoubleComplex : rvSingleComplex)
                                                 : (fIsDouble ? rvDouble : rvSingle));
    if (h.HasTagAndCaption) {
        FTag = h.Tag;
        FCaption = h.Caption;
    }
    fConditionCheck = h.ConditionCheck;
    FileVersion = h.Version;
    InternalReadHeader(stream);
}

// ===========================================================================
// TMtx: header
// ===========================================================================
void TMtx::WriteStreamHeader(std::ostream& stream, TPrecision precision, TEndianness endianness) {
    StreamHeader h;
    h.Complex = fComplex;
    h.Rows = fRows;
    h.Cols = fCols;
    h.AutoMtxType = FAutoMtxType;
    h.Balance = FBalance;
    h.ConditionCheck = fConditionCheck;
    h.ConditionNumber = FConditionNumber;
    h.Precision = precision;
    h.RefineSolution = FRefineSolution;
    h.TriangleForm = FTriangleForm;
    h.TriangleUnit = FTriangleUnit;
    h.SuperDiag = FSuperDiag;
    h.SubDiag = FSubDiag;
    h.Tag = FTag;
    float f[kMtxHeaderFloats];
    EncodeMtxHeader(h, fIsDouble ? 8.0f : 4.0f, f);
    // Quadratic as the matrix holds it.
    f[3] = fQuadratic ? 1.0f : 0.0f;
    WriteHeaderFloats(stream, kMtxHeaderFloats, f, FCaption, endianness);
}

void TMtx::ParseStreamHeader(std::istream& stream, TEndianness endianness, StreamHeader& h) const {
    ParseMtxHeader(stream, endianness, h, "TMtx");
}

void TMtx::ApplyStreamHeader(std::istream&, const StreamHeader& h) {
    Size(static_cast<int32_t>(h.Rows), static_cast<int32_t>(h.Cols), h.Complex, fIsDouble);
    // Quadratic follows the shape that sizing set.
    SetAutoMtxType(h.AutoMtxType);
    SetBalance(static_cast<TBalanceType>(h.Balance));
    SetConditionCheck(h.ConditionCheck);
    SetConditionNumber(static_cast<TConditionNumber>(h.ConditionNumber));
    SetRefineSolution(h.RefineSolution);
    SetTriangleForm(static_cast<TTriangleForm>(h.TriangleForm));
    SetTriangleUnit(h.TriangleUnit);
    SetSuperDiag(h.SuperDiag);
    SetSubDiag(h.SubDiag);
    if (h.HasTagAndCaption) {
        FTag = h.Tag;
        FCaption = h.Caption;
    }
    FileVersion = h.Version;
}

// ===========================================================================
// Text forms
// ===========================================================================
int32_t ColumnCount(const TStringList& List, int32_t Row, std::string_view Delimiter) {
    if (Row < 0 || Row > List.Count() - 1) ERangeErrorRaise("Row > aList.Count-1");
    const std::string& line = List[Row];
    size_t pos = 0;
    std::string_view item;
    int32_t n = 0;
    while (NextItem(line, pos, Delimiter, item)) ++n;
    return n;
}

void TVec::ValuesToStrings(TStringList& dst) const {
    dst.Clear();
    ValuesToStrings(dst, 0, 0, -1);
}

void TVec::ValuesToStrings(TStringList& dst, int32_t listIndex, int32_t index, int32_t len, TFixedTextAlign align,
                           std::string_view reFormat, std::string_view imFormat, bool headers) const {
    TRovaneBase::ValidateParams(index, len);
    if (listIndex < 0) ERangeErrorRaiseFmt("TVec.ValuesToStrings: ListIndex < 0 (%d)", listIndex);
    // Range checks may be off: a range outside the object formats nothing
    // rather than reading beyond it.
    if (index < 0 || len < 0 || int64_t(index) + len > fLength) return;
    std::vector<std::string> lines(static_cast<size_t>(len));
    for (int32_t i = 0; i < len; ++i) lines[static_cast<size_t>(i)] = FormatValue(*this, index + i, reFormat, imFormat);
    Pad(lines, align);
    if (headers) InsertRowHeaders(lines, index);
    PlaceLines(dst, listIndex, lines);
}

std::string TVec::ValuesToText(std::string_view reFormat, std::string_view imFormat) const {
    TStringList l;
    ValuesToStrings(l, 0, 0, -1, ftaNone, reFormat, imFormat, false);
    return JoinLines(l);
}

TVec& TVec::StringsToValues(const TStringList& src) {
    std::vector<TCplx> v(static_cast<size_t>(src.Count()));
    for (int32_t i = 0; i < src.Count(); ++i)
        WrapLine(i, [&] { v[static_cast<size_t>(i)] = ParseItem(src[i], fComplex, fIsDouble); });
    Size(src.Count(), fComplex);
    StoreValues(*this, 0, v.data(), static_cast<int64_t>(v.size()));
    return *this;
}

TVec& TVec::StringsToValues(const TStringList& src, int32_t listIndex, int32_t index, int32_t len) {
    if (len == -1) len = src.Count() - listIndex;
    if (fConditionCheck) {
        if (int64_t(index) + len > fLength) ERangeErrorRaise("(Index + Len) > fLength");
        if (int64_t(listIndex) + len > src.Count()) ERangeErrorRaise("ListIndex + Len > aList.Count");
    }
    if (index < 0 || listIndex < 0 || len < 0 || int64_t(index) + len > fLength)
        ERangeErrorRaiseFmt("TVec.StringsToValues: Index: %d, ListIndex: %d, Len: %d, Length: %d", index, listIndex,
                            len, fLength);
    std::vector<TCplx> v(static_cast<size_t>(len));
    for (int32_t i = 0; i < len; ++i)
        WrapLine(listIndex + i, [&] { v[static_cast<size_t>(i)] = ParseItem(src[listIndex + i], fComplex, fIsDouble); });
    StoreValues(*this, index, v.data(), len);
    return *this;
}

TVec& TVec::TextToValues(std::string_view text) {
    TStringList l;
    l.SetText(text);
    return StringsToValues(l);
}

void TMtx::ValuesToStrings(TStringList& dst, std::string_view delimiter) const {
    dst.Clear();
    if (fRows == 0 || fCols == 0) return;
    ValuesToStrings(dst, 0, 0, fRows, fCols, delimiter);
}

void TMtx::ValuesToStrings(TStringList& dst, int32_t row, int32_t col, int32_t rowCount, int32_t colCount,
                           std::string_view delimiter, TFixedTextAlign align, std::string_view reFormat,
                           std::string_view imFormat, bool headers) const {
    if (fConditionCheck) {
        if (row < 0 || row >= fRows) ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Row < FRows");
        if (col < 0 || col >= fCols) ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Col < FCols");
        if (rowCount < 0 || int64_t(row) + rowCount > fRows)
            ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Row + RowCount <= FRows");
        if (colCount < 0 || int64_t(col) + colCount > fCols)
            ERangeErrorRaise("TMtx.ValuesToStrings: 0 <= Col + ColCount <= FCols");
    }
    if (row < 0 || col < 0 || rowCount < 0 || colCount < 0 || int64_t(row) + rowCount > fRows ||
        int64_t(col) + colCount > fCols)
        return;
    const int64_t lead = fLeadingCols > 0 ? fLeadingCols : fCols;
    std::vector<std::string> cells(static_cast<size_t>(int64_t(rowCount) * colCount));
    for (int32_t r = 0; r < rowCount; ++r)
        for (int32_t c = 0; c < colCount; ++c)
            cells[static_cast<size_t>(int64_t(r) * colCount + c)] =
                FormatValue(*this, (row + r) * lead + col + c, reFormat, imFormat);
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

std::string TMtx::ValuesToText(std::string_view delimiter, std::string_view reFormat,
                               std::string_view imFormat) const {
    TStringList l;
    if (fRows > 0 && fCols > 0) ValuesToStrings(l, 0, 0, fRows, fCols, delimiter, ftaNone, reFormat, imFormat);
    return JoinLines(l);
}

namespace {
// Parses ListLen lines from ListIndex into a rows x cols block of values.
std::vector<TCplx> ParseMatrixLines(const TStringList& src, int32_t listIndex, int32_t listLen, int32_t cols,
                                    std::string_view delimiter, bool complex, bool isDouble) {
    return ParseLines<TCplx>(src, listIndex, listLen, cols, delimiter, TCplx(0.0, 0.0),
                             [&](std::string_view item) { return ParseItem(item, complex, isDouble); });
}
}  // namespace

TMtx& TMtx::StringsToValues(const TStringList& src, std::string_view delimiter) {
    if (src.Count() == 0) {
        Size(0, 0, fComplex, fIsDouble);
        return *this;
    }
    const int32_t cols = ColumnCount(src, 0, delimiter);
    if (int64_t(src.Count()) * cols > std::numeric_limits<int32_t>::max())
        ERangeErrorRaiseFmt("TMtx.StringsToValues: Rows * Cols > MaxInt (%d * %d)", src.Count(), cols);
    const std::vector<TCplx> v = ParseMatrixLines(src, 0, src.Count(), cols, delimiter, fComplex, fIsDouble);
    Size(src.Count(), cols, fComplex, fIsDouble);
    StoreValues(*this, 0, v.data(), static_cast<int64_t>(v.size()));
    return *this;
}

TMtx& TMtx::StringsToValues(const TStringList& src, int32_t listIndex, int32_t listLen, int32_t row, int32_t col,
                            std::string_view delimiter) {
    if (listLen == -1) listLen = src.Count() - listIndex;
    const int32_t cols = ColumnCount(src, listIndex, delimiter);
    if (fConditionCheck) {
        if (int64_t(row) + listLen > fRows) ERangeErrorRaise("(Row + ListLen - 1) > fRows");
        if (int64_t(col) + cols > fCols) ERangeErrorRaise("(Col + ColumnCount) > fCols");
        if (int64_t(listIndex) + listLen > src.Count()) ERangeErrorRaise("(ListIndex + ListLen - 1) > aList.Count");
    }
    if (row < 0 || col < 0 || listLen < 0 || int64_t(row) + listLen > fRows || int64_t(col) + cols > fCols ||
        int64_t(listIndex) + listLen > src.Count())
        ERangeErrorRaiseFmt("TMtx.StringsToValues: Row: %d, Col: %d, ListIndex: %d, ListLen: %d", row, col, listIndex,
                            listLen);
    const std::vector<TCplx> v = ParseMatrixLines(src, listIndex, listLen, cols, delimiter, fComplex, fIsDouble);
    const int64_t lead = fLeadingCols > 0 ? fLeadingCols : fCols;
    for (int32_t r = 0; r < listLen; ++r)
        StoreValues(*this, (row + r) * lead + col, v.data() + int64_t(r) * cols, cols);
    return *this;
}

TMtx& TMtx::TextToValues(std::string_view text, std::string_view delimiter) {
    TStringList l;
    l.SetText(text);
    return StringsToValues(l, delimiter);
}

}  // namespace rovane
