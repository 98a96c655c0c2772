// TVec and TMtx: the dense vector and matrix.
#pragma once

#include "rovane/containers/AbstractRovane.h"

namespace rovane {

class ROVANE_API TVec : public TDenseRovane {
public:
    TVec();
    ~TVec() override;

    // ---- Size ----------------------------------------------------------
    TVec& Size(int32_t aLength);
    TVec& Size(int32_t aLength, bool aIsComplex);
    TVec& Size(int32_t aLength, bool aIsComplex, bool aIsDouble);
    TVec& Size(int32_t aLength, const TRovane& src);
    TVec& Size(int32_t aLength, TMtxFloatPrecision precision);
    TVec& Size(const TRovaneBase& src) override;
    TVec& Size(const TRovaneBase& src, bool complex) override;
    TVec& Size(const TRovaneBase& src, TMtxFloatPrecision precision) override;
    TVec& Resize(int32_t len, bool zeroIt = false);
    TVec& Resize(const TRovane& src, int32_t len, bool zeroIt = false);

    // ---- foreign memory ------------------------------------------------
    TVec& Adopt(void* pointer, int32_t length, TMtxFloatPrecision precision);
    TVec& Adopt(void* pointer, int32_t length, bool isComplex, bool isDouble);
    void Disown(void*& pointer, int32_t& length, TMtxFloatPrecision& precision);
    void Disown(void*& pointer, int32_t& length, bool& isComplex, bool& isDouble);
    void Disown();

    // ---- overrides -----------------------------------------------------
    void Assign(const TRovaneBase& src) override;
    void SubRangeSaveState() override;
    void SetSubRangeDirect(int32_t index, int32_t len) override;
    void SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) override;
    int32_t CacheLength() const override;
    int64_t CacheLengthInBytes() const override;
    void DoSetLength(int32_t value) override;
    void Reset() override;
    void Clear() override;
    void FreeToCache() override;
    void DoSetComplex() override;
    void InternalResize(int32_t len, bool zeroIt) override;
    void* DoubleCachePointer() const override;
    void* SingleCachePointer() const override;

    // ==== the chaining members, returning TVec& ============================
#include "rovane/containers/generated/TVec.chain.h"
};

class ROVANE_API TMtx : public TDenseRovane {
public:
    TMtx();
    ~TMtx() override;

    int32_t fRows = 0, fCols = 0, fLeadingCols = 0;
    bool fQuadratic = true;
    int32_t SRows = 0, SCols = 0, SLeadingCols = 0;

    int32_t Rows() const { return fRows; }
    int32_t Cols() const { return fCols; }
    int32_t LeadingCols() const { return fLeadingCols; }
    bool Quadratic() const { return fQuadratic; }

    // ---- Size ----------------------------------------------------------
    TMtx& Size(int32_t aRows, int32_t aCols);
    TMtx& Size(int32_t aRows, int32_t aCols, bool aIsComplex);
    TMtx& Size(int32_t aRows, int32_t aCols, bool aIsComplex, bool aIsDouble);
    TMtx& Size(int32_t aRows, int32_t aCols, TMtxFloatPrecision precision);
    TMtx& Size(const TRovaneBase& src) override;
    TMtx& Size(const TRovaneBase& src, bool complex) override;
    TMtx& Size(const TRovaneBase& src, TMtxFloatPrecision precision) override;
    // A range of Rows x Cols elements of Src starting at Index, as a matrix.
    void SetSubRange(TRovaneBase& src, int32_t index, int32_t rows, int32_t cols);
    using TRovaneBase::SetSubRange;

    TMtx& Adopt(void* pointer, int32_t rows, int32_t cols, TMtxFloatPrecision precision);
    void Disown();

    // ---- overrides -----------------------------------------------------
    void Assign(const TRovaneBase& src) override;
    void SubRangeSaveState() override;
    void SubRangeLoadState() override;
    void SetSubRangeDirect(int32_t index, int32_t len) override;
    void SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) override;
    int32_t CacheLength() const override;
    int64_t CacheLengthInBytes() const override;
    void DoSetLength(int32_t value) override;
    void Reset() override;
    void Clear() override;
    void FreeToCache() override;
    void DoSetComplex() override;
    void InternalResize(int32_t len, bool zeroIt) override;
    void* DoubleCachePointer() const override;
    void* SingleCachePointer() const override;

    // ==== the chaining members, returning TMtx& ============================
#include "rovane/containers/generated/TMtx.chain.h"

private:
    void SetSubRangeDirect2(TRovaneBase& src, int32_t index, int32_t rows, int32_t cols);
    void SetShape(int32_t rows, int32_t cols);
};

}  // namespace rovane
