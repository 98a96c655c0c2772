// Helpers of the fuzz targets: an input stream over the fuzzer's bytes that
// can be made non-seekable, and the check that a failed load changed nothing.
#pragma once

#include <rovane/Rovane.h>

#include <cstdio>
#include <cstdlib>
#include <istream>
#include <streambuf>
#include <vector>

namespace rovane::fuzz {

// Read-only buffer over the input; with seekable false every seek fails, as
// on a pipe, which sends the loader through its buffering path.
class InputBuf : public std::streambuf {
public:
    InputBuf(const uint8_t* p, size_t n, bool seekable) : fSeekable(seekable) {
        char* b = const_cast<char*>(reinterpret_cast<const char*>(p));
        setg(b, b, b + n);
    }

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode which) override {
        if (!fSeekable || !(which & std::ios_base::in)) return pos_type(off_type(-1));
        const off_type base = dir == std::ios_base::beg ? 0 : dir == std::ios_base::cur ? gptr() - eback() : egptr() - eback();
        const off_type to = base + off;
        if (to < 0 || to > egptr() - eback()) return pos_type(off_type(-1));
        setg(eback(), eback() + to, egptr());
        return pos_type(to);
    }
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override {
        return seekoff(off_type(pos), std::ios_base::beg, which);
    }

private:
    bool fSeekable;
};

[[noreturn]] inline void Fail(const char* what) {
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

// The observable state of a container.
struct Snapshot {
    int32_t Length = 0;
    bool Complex = false, IsDouble = true, CondCheck = true;
    int32_t Tag = 0;
    std::string Caption;
    std::vector<double> Values;

    explicit Snapshot(const TRovane& o)
        : Length(o.Length()), Complex(o.Complex()), IsDouble(o.IsDouble()), CondCheck(o.ConditionCheck()),
          Tag(o.Tag()), Caption(o.Caption()) {
        const int32_t n = o.Complex() ? 2 * o.Length() : o.Length();
        for (int32_t i = 0; i < n; ++i) Values.push_back(o[i]);
    }
    bool operator==(const Snapshot& s) const {
        if (Length != s.Length || Complex != s.Complex || IsDouble != s.IsDouble || CondCheck != s.CondCheck ||
            Tag != s.Tag || Caption != s.Caption || Values.size() != s.Values.size())
            return false;
        for (size_t i = 0; i < Values.size(); ++i)
            if (!(Values[i] == s.Values[i]) && !(Values[i] != Values[i] && s.Values[i] != s.Values[i])) return false;
        return true;
    }
};

}  // namespace rovane::fuzz
