// Binary persistence below the containers: the sample formats of TPrecision,
// the conversion of float arrays to and from them, raw typed copies with the
// byte swap, the float header arrays, short strings and plain fields.
//
// The stream type of the library is the standard C++ stream: std::ostream to
// write, std::istream to read. Files are opened in binary mode.
//
// Sample formats (code, text of PrecisionToStr, bytes per real value):
//   prDouble   "float, 8 bytes"                8
//   prSingle   "float, 4 bytes"                4
//   prInteger  "integer, 4 bytes"              4   saturating at the int32 range
//   prCardinal "unsigned integer, 4 bytes"     4   below 0 gives 0, above 4294967295 that
//   prSmallInt "integer, 2 bytes"              2   through single precision
//   prWord     "unsigned integer, 2 bytes"     2   through single precision
//   prShortInt "integer, 1 byte"               1   through single precision
//   prByte     "unsigned integer, 1 byte"      1   through single precision
//   prMuLaw    "MuLaw integer, 1 byte"         1   G.711 mu-law of a 16-bit sample
//   prALaw     "ALaw integer, 1 byte"          1   G.711 A-law of a 16-bit sample
//   prInt24    "integer, 3 bytes"              3   saturating at -8388608..8388607
// Integer formats round by TRounding: rnTrunc toward zero, rnRound to nearest
// with ties to even. A NaN is stored as 0. The 16-bit and 8-bit formats (and
// the two G.711 codes) first narrow a double to single precision. The G.711
// codes take values on the scale of 16-bit samples (-32768..32767) and give
// them back on that scale. Multi-byte formats honour TEndianness; one-byte
// formats have no order.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "rovane/scalars/Scalars.h"

namespace rovane {

class TStringList;

// The format version written by this library and the signature of its
// container headers.
inline constexpr int32_t RovaneStreamVersion = 606;
inline constexpr int32_t RovaneStreamSignature = 64019;

// Version of the header read last, -1 outside a header/values pair. Shared
// by the whole process: two threads must not load containers at one moment.
ROVANE_API extern int32_t FileVersion;

// "float, 8 bytes", ...; "Unknown" for a code outside the table.
ROVANE_API std::string PrecisionToStr(TPrecision Precision);
// Bytes of one value, doubled for complex; 0 for an unknown code.
ROVANE_API int32_t SizeOfPrecision(TPrecision Precision, bool Complex);

// ---------------------------------------------------------------------------
// Single samples.
// ---------------------------------------------------------------------------
// Signed 24-bit sample from three bytes, least significant first.
ROVANE_API double Bit24ToFloat(const uint8_t* Src);
// The inverse with the chosen rounding, clipping to -8388608..8388607.
ROVANE_API void FloatTo24Bit(double x, uint8_t* Dst, TRounding Rounding);
// G.711 codes of a 16-bit linear sample and back.
ROVANE_API uint8_t LinToMuLaw(int16_t x);
ROVANE_API int16_t MuLawToLin(uint8_t code);
ROVANE_API uint8_t LinToALaw(int16_t x);
ROVANE_API int16_t ALawToLin(uint8_t code);

// ---------------------------------------------------------------------------
// Float arrays to sample formats and back. Len counts elements of the array
// type: a complex form handles 2 * Len interleaved values. An unknown code
// writes and reads nothing.
// ---------------------------------------------------------------------------
ROVANE_API void WriteBinaryValues(std::ostream& Stream, const double* Src, int32_t SrcIndex, int32_t Len,
                                  TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API void WriteBinaryValues(std::ostream& Stream, const float* Src, int32_t SrcIndex, int32_t Len,
                                  TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API void WriteBinaryValuesc(std::ostream& Stream, const TCplx* Src, int32_t SrcIndex, int32_t Len,
                                   TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API void WriteBinaryValuesc(std::ostream& Stream, const TSCplx* Src, int32_t SrcIndex, int32_t Len,
                                   TPrecision Precision, TRounding Rounding, TEndianness Endianness);
// Into a bare pointer with room for Len * SizeOfPrecision bytes; returns the
// bytes written.
ROVANE_API int64_t WriteBinaryValues(uint8_t* Dst, const double* Src, int32_t SrcIndex, int32_t Len,
                                     TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API int64_t WriteBinaryValues(uint8_t* Dst, const float* Src, int32_t SrcIndex, int32_t Len,
                                     TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API int64_t WriteBinaryValuesc(uint8_t* Dst, const TCplx* Src, int32_t SrcIndex, int32_t Len,
                                      TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API int64_t WriteBinaryValuesc(uint8_t* Dst, const TSCplx* Src, int32_t SrcIndex, int32_t Len,
                                      TPrecision Precision, TRounding Rounding, TEndianness Endianness);
// Into a byte array at Position, which advances; the array grows as needed.
ROVANE_API void WriteBinaryValues(TByteArray& Dst, int64_t& Position, const double* Src, int32_t SrcIndex,
                                  int32_t Len, TPrecision Precision, TRounding Rounding, TEndianness Endianness);
ROVANE_API void WriteBinaryValues(TByteArray& Dst, int64_t& Position, const float* Src, int32_t SrcIndex,
                                  int32_t Len, TPrecision Precision, TRounding Rounding, TEndianness Endianness);

// Reads Len elements; raises "Stream read error" when the stream ends first.
ROVANE_API void ReadBinaryValues(std::istream& Stream, double* Dst, int32_t DstIndex, int32_t Len,
                                 TPrecision Precision, TEndianness Endianness);
ROVANE_API void ReadBinaryValues(std::istream& Stream, float* Dst, int32_t DstIndex, int32_t Len,
                                 TPrecision Precision, TEndianness Endianness);
ROVANE_API void ReadBinaryValuesc(std::istream& Stream, TCplx* Dst, int32_t DstIndex, int32_t Len,
                                  TPrecision Precision, TEndianness Endianness);
ROVANE_API void ReadBinaryValuesc(std::istream& Stream, TSCplx* Dst, int32_t DstIndex, int32_t Len,
                                  TPrecision Precision, TEndianness Endianness);
// From a bare pointer holding Len * SizeOfPrecision bytes; returns the bytes read.
ROVANE_API int64_t ReadBinaryValues(const uint8_t* Src, double* Dst, int32_t DstIndex, int32_t Len,
                                    TPrecision Precision, TEndianness Endianness);
ROVANE_API int64_t ReadBinaryValues(const uint8_t* Src, float* Dst, int32_t DstIndex, int32_t Len,
                                    TPrecision Precision, TEndianness Endianness);

// Raw copies of one element type with the byte swap of each element (each
// part of a complex element) for boBigEndian.
ROVANE_API void WriteToStream(std::ostream& Stream, const double* Src, int32_t SrcIndex, int32_t Len,
                              TEndianness Endianness);
ROVANE_API void WriteToStream(std::ostream& Stream, const float* Src, int32_t SrcIndex, int32_t Len,
                              TEndianness Endianness);
ROVANE_API void WriteToStreamc(std::ostream& Stream, const TCplx* Src, int32_t SrcIndex, int32_t Len,
                               TEndianness Endianness);
ROVANE_API void WriteToStreamc(std::ostream& Stream, const TSCplx* Src, int32_t SrcIndex, int32_t Len,
                               TEndianness Endianness);
ROVANE_API void ReadFromStream(std::istream& Stream, double* Dst, int32_t DstIndex, int32_t Len,
                               TEndianness Endianness);
ROVANE_API void ReadFromStream(std::istream& Stream, float* Dst, int32_t DstIndex, int32_t Len,
                               TEndianness Endianness);
ROVANE_API void ReadFromStreamc(std::istream& Stream, TCplx* Dst, int32_t DstIndex, int32_t Len,
                                TEndianness Endianness);
ROVANE_API void ReadFromStreamc(std::istream& Stream, TSCplx* Dst, int32_t DstIndex, int32_t Len,
                                TEndianness Endianness);

// Header arrays of 32-bit floats: one write (the caller's array is left as
// it was); the read sizes the array and returns false on a short stream.
ROVANE_API void WriteBinaryToStream(std::ostream& Stream, int32_t Count, const float* Floats,
                                    TEndianness Endianness);
ROVANE_API bool ReadBinaryFromStream(std::istream& Stream, int32_t Count, TSingleArray& Floats,
                                     TEndianness Endianness);
ROVANE_API bool ReadBinaryFromStream(std::istream& Stream, int32_t Count, float* Floats, TEndianness Endianness);

// One length byte, then the characters. Longer text raises
// "WriteShortString: Length(s) > 255" before anything is written.
ROVANE_API void WriteShortString(std::ostream& Stream, std::string_view s);
// False on a short stream (s is then empty).
ROVANE_API bool ReadShortString(std::istream& Stream, std::string& s);

// Plain fields: native width, least significant byte first. The plain reads
// raise "Stream read error" on a short stream; the forms with BytesRead
// never raise and give 0 for a short field.
ROVANE_API int8_t StreamReadInt8(std::istream& Stream);
ROVANE_API uint8_t StreamReadUInt8(std::istream& Stream);
ROVANE_API int16_t StreamReadInt16(std::istream& Stream);
ROVANE_API uint16_t StreamReadUInt16(std::istream& Stream);
ROVANE_API int32_t StreamReadInt32(std::istream& Stream);
ROVANE_API uint32_t StreamReadUInt32(std::istream& Stream);
ROVANE_API int64_t StreamReadInt64(std::istream& Stream);
ROVANE_API uint64_t StreamReadUInt64(std::istream& Stream);
ROVANE_API float StreamReadSingle(std::istream& Stream);
ROVANE_API double StreamReadDouble(std::istream& Stream);
ROVANE_API int8_t StreamReadInt8(std::istream& Stream, int32_t& BytesRead);
ROVANE_API uint8_t StreamReadUInt8(std::istream& Stream, int32_t& BytesRead);
ROVANE_API int16_t StreamReadInt16(std::istream& Stream, int32_t& BytesRead);
ROVANE_API uint16_t StreamReadUInt16(std::istream& Stream, int32_t& BytesRead);
ROVANE_API int32_t StreamReadInt32(std::istream& Stream, int32_t& BytesRead);
ROVANE_API uint32_t StreamReadUInt32(std::istream& Stream, int32_t& BytesRead);
ROVANE_API int64_t StreamReadInt64(std::istream& Stream, int32_t& BytesRead);
ROVANE_API uint64_t StreamReadUInt64(std::istream& Stream, int32_t& BytesRead);
ROVANE_API float StreamReadSingle(std::istream& Stream, int32_t& BytesRead);
ROVANE_API double StreamReadDouble(std::istream& Stream, int32_t& BytesRead);
ROVANE_API void StreamWriteInt8(std::ostream& Stream, int8_t x);
ROVANE_API void StreamWriteUInt8(std::ostream& Stream, uint8_t x);
ROVANE_API void StreamWriteInt16(std::ostream& Stream, int16_t x);
ROVANE_API void StreamWriteUInt16(std::ostream& Stream, uint16_t x);
ROVANE_API void StreamWriteInt32(std::ostream& Stream, int32_t x);
ROVANE_API void StreamWriteUInt32(std::ostream& Stream, uint32_t x);
ROVANE_API void StreamWriteInt64(std::ostream& Stream, int64_t x);
ROVANE_API void StreamWriteUInt64(std::ostream& Stream, uint64_t x);
ROVANE_API void StreamWriteSingle(std::ostream& Stream, float x);
ROVANE_API void StreamWriteDouble(std::ostream& Stream, double x);
// A 32-bit byte count, then the bytes (UTF-8 as the string holds them). A
// count below 0 or beyond the stream raises "StreamReadString: invalid length %d".
ROVANE_API void StreamWriteString(std::ostream& Stream, std::string_view s);
ROVANE_API std::string StreamReadString(std::istream& Stream);

// Number of items in line Row of List, delimited as the container text
// readers split them (runs of Delimiter count as one). Raises
// "Row > aList.Count-1" for a list that has no line Row.
ROVANE_API int32_t ColumnCount(const TStringList& List, int32_t Row, std::string_view Delimiter);

// Bytes left between the read position and the end of Stream, or -1 when the
// stream cannot tell (a pipe, a terminal).
ROVANE_API int64_t StreamBytesLeft(std::istream& Stream);

// The persisting side of an object that stores named properties: an object
// registers its binary properties with a reader and a writer. Containers
// register "DataValues", read by LoadBinaryStream and written by
// SaveBinaryStream.
class ROVANE_API TFiler {
public:
    virtual ~TFiler() = default;
    virtual void DefineBinaryProperty(std::string_view Name, const std::function<void(std::istream&)>& ReadData,
                                      const std::function<void(std::ostream&)>& WriteData, bool HasData) = 0;
};

}  // namespace rovane
