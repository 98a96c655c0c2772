// TVec and TMtx: the dense vector and matrix.
#pragma once

#include <initializer_list>
#include <string_view>

#include "rovane/containers/AbstractRovane.h"
#include "rovane/containers/MatrixSettings.h"

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
#define ROVANE_CHAIN_CLASS TVec
#include "rovane/containers/generated/Chain.h"
#undef ROVANE_CHAIN_CLASS
    // ---- members of the family tables that belong to TVec alone -----------
#include "rovane/containers/generated/TVec.members.h"

    // ---- streams and text forms (containers/RovaneStreams.cpp) ------------
    // ValuesToStrings, ValuesToText, StringsToValues, TextToValues: rows of
    // tables/streams.tbl.

protected:
    void WriteStreamHeader(std::ostream& stream, TPrecision precision, TEndianness endianness) override;
    void ParseStreamHeader(std::istream& stream, TEndianness endianness, StreamHeader& h) const override;
    void ApplyStreamHeader(std::istream& stream, const StreamHeader& h) override;
    // ---- end of streams and text forms ---------------------------------
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
    // Rows x Cols with the precision of Like.
    TMtx& Size(int32_t aRows, int32_t aCols, const TRovane& like) { return Size(aRows, aCols, like.fFloatPrecision); }
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
#define ROVANE_CHAIN_CLASS TMtx
#include "rovane/containers/generated/Chain.h"
#undef ROVANE_CHAIN_CLASS

    // ==== matrix members (tables/matrices.tbl, containers/Matrix*.cpp) =====
#include "rovane/containers/generated/TMtx.members.h"
    // Rows and Cols as properties (setters: SetRows, SetCols in the table).
    // LeadingCols is read-only here: every view the library makes is a
    // block of whole rows, so it equals Cols; the matrix routines take it as
    // the row stride all the same.

    // ---- streams and text forms (containers/RovaneStreams.cpp) ------------
    // Solver settings that the stream header carries (defaults: false, btFull,
    // cnNone, false, tfUpper, false, 0, 0); sizing keeps them.
    bool FAutoMtxType = false;
    TBalanceType FBalance = btFull;
    TConditionNumber FConditionNumber = cnNone;
    bool FRefineSolution = false;
    TTriangleForm FTriangleForm = tfUpper;
    bool FTriangleUnit = false;
    int32_t FSuperDiag = 0, FSubDiag = 0;
    bool AutoMtxType() const { return FAutoMtxType; }
    void SetAutoMtxType(bool v) { FAutoMtxType = v; }
    TBalanceType Balance() const { return FBalance; }
    void SetBalance(TBalanceType v) { FBalance = v; }
    TConditionNumber ConditionNumber() const { return FConditionNumber; }
    void SetConditionNumber(TConditionNumber v) { FConditionNumber = v; }
    bool RefineSolution() const { return FRefineSolution; }
    void SetRefineSolution(bool v) { FRefineSolution = v; }
    TTriangleForm TriangleForm() const { return FTriangleForm; }
    void SetTriangleForm(TTriangleForm v) { FTriangleForm = v; }
    bool TriangleUnit() const { return FTriangleUnit; }
    void SetTriangleUnit(bool v) { FTriangleUnit = v; }
    int32_t SuperDiag() const { return FSuperDiag; }
    void SetSuperDiag(int32_t v) { FSuperDiag = v; }
    int32_t SubDiag() const { return FSubDiag; }
    void SetSubDiag(int32_t v) { FSubDiag = v; }

    // ValuesToStrings, ValuesToText, StringsToValues, TextToValues (the text
    // forms): rows of tables/streams.tbl.

protected:
    void WriteStreamHeader(std::ostream& stream, TPrecision precision, TEndianness endianness) override;
    void ParseStreamHeader(std::istream& stream, TEndianness endianness, StreamHeader& h) const override;
    void ApplyStreamHeader(std::istream& stream, const StreamHeader& h) override;
    // ---- end of streams and text forms ---------------------------------

private:
    void SetSubRangeDirect2(TRovaneBase& src, int32_t index, int32_t rows, int32_t cols);
    void SetShape(int32_t rows, int32_t cols);
};

}  // namespace rovane
