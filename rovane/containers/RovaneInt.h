// Integer containers: storage and sizing of 32-, 16- and 8-bit integer
// vectors and matrices. Their operations build on this.
#pragma once

#include "rovane/storage/RovaneBase.h"

namespace rovane {

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

    TIntPrecision IntPrecision() const { return fIntPrecision; }
    TRovaneInt& Size(int32_t aLength, TIntPrecision precision);
    TRovaneInt& Size(int32_t aLength) { return Size(aLength, fIntPrecision); }

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
    ~TRovaneInt() override;
    void SetBaseView(void* base);
    void DestroyInt() noexcept;
};

class ROVANE_API TVecInt : public TRovaneInt {
public:
    TVecInt();
    ~TVecInt() override;
};

class ROVANE_API TMtxInt : public TRovaneInt {
public:
    TMtxInt();
    ~TMtxInt() override;
};

}  // namespace rovane
