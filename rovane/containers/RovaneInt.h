// Integer containers: storage and sizing of 32-, 16- and 8-bit integer
// vectors and matrices. Their operations build on this.
#pragma once

#include <initializer_list>
#include <span>
#include <vector>
#include <string_view>

#include "rovane/storage/RovaneBase.h"
#include "rovane/storage/Streams.h"

namespace rovane {

class TRovane;
class TVec;
class TVecInt;
class TMtxInt;

class ROVANE_API TRovaneInt : public TRovaneBase {
public:
    TIntPrecision fIntPrecision = prInt32;
    int32_t FDataOffset = 0;
    int32_t* IData = nullptr;  // base views by width, null for the others
    int16_t* SIData = nullptr;
    uint8_t* BData = nullptr;
    int32_t* IValues = nullptr;  // views of the current range
    int16_t* SIValues = nullptr;
    uint8_t* BValues = nullptr;
    TIntPrecision SIntPrecision = prInt32;
    // Scale of the saturating arithmetic: results are multiplied by
    // 2^-ScaleFactor, rounded to nearest (ties to even) and saturated.
    int32_t FScaleFactor = 0;
    // With the lock on, Size keeps the present width whatever it is asked.
    bool FIntPrecisionLock = false;
    // Length in bits when the object holds a bit set (BitPack, SetBitCount).
    int64_t FBitCount = 0;

    TIntPrecision IntPrecision() const { return fIntPrecision; }
    // Changes the width and keeps the length (the block is kept when it is
    // large enough in bytes); the values are not converted.
    void SetIntPrecision(TIntPrecision value) { Size(fLength, value); }
    int32_t ScaleFactor() const { return FScaleFactor; }
    void SetScaleFactor(int32_t value) { FScaleFactor = value; }
    bool IntPrecisionLock() const { return FIntPrecisionLock; }
    void SetIntPrecisionLock(bool value) { FIntPrecisionLock = value; }
    TRovaneInt& Size(int32_t aLength, TIntPrecision precision);
    TRovaneInt& Size(int32_t aLength) { return Size(aLength, fIntPrecision); }
    // A new length keeping the values of the width (a shorter length keeps
    // the block; a longer one copies, zeroing the new elements if asked).
    TRovaneInt& Resize(int32_t aLength, bool zeroIt = false);
    // Length and width of Src (an integer container); a matrix takes the
    // shape of a matrix source (of a vector: Length rows, one column).
    TRovaneInt& Size(const TRovaneInt& src);

    // Element i of the range as a 32-bit integer, unchecked; writing
    // narrows to the width (an 8-bit element keeps the low byte).
    int32_t GetElement(int32_t i) const {
        return IValues ? IValues[i] : SIValues ? int32_t(SIValues[i]) : int32_t(BValues[i]);
    }
    void PutElement(int32_t i, int32_t v) {
        if (IValues)
            IValues[i] = v;
        else if (SIValues)
            SIValues[i] = static_cast<int16_t>(v);
        else
            BValues[i] = static_cast<uint8_t>(v);
    }
    class ElementRef {
    public:
        ElementRef(TRovaneInt& owner, int32_t i) : fOwner(owner), fIndex(i) {}
        operator int32_t() const { return fOwner.GetElement(fIndex); }
        ElementRef& operator=(int32_t v) {
            fOwner.PutElement(fIndex, v);
            return *this;
        }
        ElementRef& operator=(const ElementRef& o) { return *this = static_cast<int32_t>(o); }

    private:
        TRovaneInt& fOwner;
        int32_t fIndex;
    };
    ElementRef operator[](int32_t i) { return ElementRef(*this, i); }
    int32_t operator[](int32_t i) const { return GetElement(i); }

    // ==== the members of the integer family (containers/Integer*.cpp) ======
    // Declared from the tables containers/tables/integers.tbl and (streams,
    // files and text forms, containers/IntStreams.cpp) streams.tbl.
#include "rovane/containers/generated/TRovaneInt.members.h"

    void SubRangeSaveState() override;
    void SubRangeLoadState() override;
    void SetSubRangeDirect(int32_t index, int32_t len) override;
    void SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) override;
    void AllocMemory() override;
    void AllocCacheMemory() override;
    void HookPointers() override;
    int32_t ElemSize() const override;
    int32_t CacheLength() const override;
    int64_t CacheLengthInBytes() const override;
    void SetCapacityInElements(int32_t count) override;
    int32_t GetCapacityInElements() override;
    void DoSetLength(int32_t value) override { Size(value); }
    void Reset() override;
    void FreeToCache() override;

protected:
    // The block header of the storage; the stream WriteHeader rows hide it.
    using TRovaneBase::WriteHeader;
    ~TRovaneInt() override;
    void SetBaseView(void* base);
    void DestroyInt() noexcept;
};

class ROVANE_API TVecInt : public TRovaneInt {
public:
    TVecInt();
    ~TVecInt() override;

    TVecInt& Size(int32_t aLength) { return static_cast<TVecInt&>(TRovaneInt::Size(aLength)); }
    TVecInt& Size(int32_t aLength, TIntPrecision precision) {
        return static_cast<TVecInt&>(TRovaneInt::Size(aLength, precision));
    }
    TVecInt& Size(const TRovaneInt& src) { return static_cast<TVecInt&>(TRovaneInt::Size(src)); }

    // Bit set of n bits: n div 32 words (one more for a rest) of 32-bit
    // width. Bit i is bit i mod 32 of word i div 32, least significant first.
    int64_t BitCount() const { return FBitCount; }
    void SetBitCount(int64_t n);
    bool Bits(int64_t i) const;
    void SetBits(int64_t i, bool value);

#define ROVANE_CHAIN_CLASS TVecInt
#include "rovane/containers/generated/ChainInt.h"
#undef ROVANE_CHAIN_CLASS
#include "rovane/containers/generated/TVecInt.members.h"
};

class ROVANE_API TMtxInt : public TRovaneInt {
public:
    TMtxInt();
    ~TMtxInt() override;

    int32_t FRows = 0, FCols = 0, FLeadingCols = 0;
    int32_t fColsBitCount = 0;
    int32_t Rows() const { return FRows; }
    int32_t Cols() const { return FCols; }
    int32_t LeadingCols() const { return FLeadingCols; }

    TMtxInt& Size(int32_t aRows, int32_t aCols, TIntPrecision precision);
    TMtxInt& Size(int32_t aRows, int32_t aCols) { return Size(aRows, aCols, fIntPrecision); }
    // Rows, columns and width of Src.
    TMtxInt& Size(const TMtxInt& src) { return Size(src.FRows, src.FCols, src.fIntPrecision); }
    // Element (row, col), unchecked.
    int32_t GetElement(int32_t row, int32_t col) const { return TRovaneInt::GetElement(row * FLeadingCols + col); }
    void PutElement(int32_t row, int32_t col, int32_t v) { TRovaneInt::PutElement(row * FLeadingCols + col, v); }
    using TRovaneInt::GetElement;
    using TRovaneInt::PutElement;

    // Columns of a bit matrix: Cols = n div w (w = 32, 16 or 8 by the
    // width), plus one when n is not a multiple of 8; an unchanged value
    // does nothing. Size then keeps the rows.
    int32_t ColsBitCount() const { return fColsBitCount; }
    void SetColsBitCount(int32_t n);
    bool GetBits(int32_t row, int32_t col) const;
    void SetBits(int32_t row, int32_t col, bool value);
    // Rows x columns of a bit matrix of the present width.
    void BitSize(int32_t rows, int32_t colsBitCount);

    void DoSetLength(int32_t value) override;
    void Reset() override;

#define ROVANE_CHAIN_CLASS TMtxInt
#include "rovane/containers/generated/ChainInt.h"
#undef ROVANE_CHAIN_CLASS
#include "rovane/containers/generated/TMtxInt.members.h"
};

// Vectors and matrices of one fixed width: the width is set and locked at
// construction, and Values is the typed view of the range.
class ROVANE_API TVecSmallInt : public TVecInt {
public:
    TVecSmallInt();
    int16_t* Values = nullptr;
    void HookPointers() override;
};
class ROVANE_API TVecByte : public TVecInt {
public:
    TVecByte();
    uint8_t* Values = nullptr;
    void HookPointers() override;
};
class ROVANE_API TMtxSmallInt : public TMtxInt {
public:
    TMtxSmallInt();
    int16_t* Values = nullptr;
    void HookPointers() override;
};
class ROVANE_API TMtxByte : public TMtxInt {
public:
    TMtxByte();
    uint8_t* Values = nullptr;
    void HookPointers() override;
};

// An owning list of integer vectors: Add makes a new empty vector and
// returns it; the list frees its vectors when it is cleared or destroyed.
class ROVANE_API TVecIntList {
public:
    TVecIntList() = default;
    TVecIntList(const TVecIntList&) = delete;
    TVecIntList& operator=(const TVecIntList&) = delete;
    ~TVecIntList();
    TVecInt& Add();
    int32_t Count() const { return static_cast<int32_t>(fItems.size()); }
    // Item i; raises ERovaneRangeError "TVecIntList: Index out of range: %d".
    TVecInt& operator[](int32_t i) const;
    void Delete(int32_t i);
    void Clear();

private:
    std::vector<TVecInt*> fItems;
};

}  // namespace rovane
