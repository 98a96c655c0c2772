// Fuzz target of the binary loader: arbitrary bytes go to LoadFromStream of a
// vector or a matrix, double or single, from a seekable or a non-seekable
// stream, object after object as appended objects would be read. A load must
// either succeed or raise the library's exception with the object unchanged;
// a loaded object must save and load back to the same state.
#include <sstream>

#include "FuzzUtil.h"

using namespace rovane;

namespace {

template <class C>
void Prepare(C& c, bool isDouble);
template <>
void Prepare(TVec& v, bool isDouble) {
    v.Size(3, false, isDouble);
    const double x[3] = {1.5, -2.0, 3.25};
    v.SetDouble(x);
    v.SetTag(7);
    v.SetCaption("before");
}
template <>
void Prepare(TMtx& m, bool isDouble) {
    m.Size(2, 2, false, isDouble);
    const double x[4] = {1.5, -2.0, 3.25, 4.0};
    m.SetDouble(x);
    m.SetTag(7);
    m.SetCaption("before");
}

template <class C>
void Run(const uint8_t* data, size_t size, bool isDouble, bool seekable) {
    C obj;
    Prepare(obj, isDouble);
    fuzz::InputBuf buf(data, size, seekable);
    std::istream in(&buf);
    for (int round = 0; round < 4; ++round) {
        const fuzz::Snapshot before(obj);
        try {
            obj.LoadFromStream(in);
        } catch (const ERovaneException&) {
            if (!(fuzz::Snapshot(obj) == before)) fuzz::Fail("a failed load changed the object");
            if (FileVersion != -1) fuzz::Fail("FileVersion left set");
            return;
        }
        if (FileVersion != -1) fuzz::Fail("FileVersion left set");
        // Saved in its own precision, the object must come back unchanged.
        obj.SetPrecision(isDouble ? prDouble : prSingle);
        std::stringstream round_trip;
        obj.SaveToStream(round_trip);
        C again;
        Prepare(again, isDouble);
        again.LoadFromStream(round_trip);
        if (!(fuzz::Snapshot(again) == fuzz::Snapshot(obj))) fuzz::Fail("save and load changed the object");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const uint8_t mode = data[0];
    const bool isDouble = (mode & 1) != 0;
    const bool seekable = (mode & 2) == 0;
    if (mode & 4) Run<TMtx>(data + 1, size - 1, isDouble, seekable);
    else Run<TVec>(data + 1, size - 1, isDouble, seekable);
    return 0;
}
