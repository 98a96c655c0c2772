// String list, its counted form and the value record.
#include "rovane/strings/StringVar.h"

#include <algorithm>
#include <fstream>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>

#include "rovane/scalars/Scalars.h"

namespace rovane {

namespace {

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

int32_t CompareText(std::string_view a, std::string_view b, bool caseSensitive) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const unsigned char x = static_cast<unsigned char>(caseSensitive ? a[i] : Lower(a[i]));
        const unsigned char y = static_cast<unsigned char>(caseSensitive ? b[i] : Lower(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

// ===========================================================================
// TStringList
// ===========================================================================
TStringList::TStringList(const TStringList& src) { Assign(src); }

TStringList& TStringList::operator=(const TStringList& src) {
    if (this != &src) Assign(src);
    return *this;
}

TStringList::~TStringList() = default;

void TStringList::Changing() {
    if (FUpdateCount == 0 && FOnChanging) FOnChanging(*this);
}

void TStringList::Changed() {
    if (FUpdateCount == 0 && FOnChange) FOnChange(*this);
}

void TStringList::EndUpdate() {
    if (FUpdateCount > 0 && --FUpdateCount == 0) Changed();
}

void TStringList::CheckIndex(int32_t index, bool allowEnd) const {
    if (index < 0 || index > Count() - (allowEnd ? 0 : 1))
        ERangeErrorRaiseFmt("List index out of bounds (%d)", index);
}

const std::string& TStringList::Get(int32_t index) const {
    CheckIndex(index);
    return FItems[static_cast<size_t>(index)].Text;
}

void TStringList::Put(int32_t index, std::string_view s) {
    if (FSorted) ERaise("Operation not allowed on sorted list");
    CheckIndex(index);
    Changing();
    FItems[static_cast<size_t>(index)].Text = std::string(s);
    Changed();
}

void* TStringList::Objects(int32_t index) const {
    CheckIndex(index);
    return FItems[static_cast<size_t>(index)].Object;
}

void TStringList::PutObject(int32_t index, void* object) {
    CheckIndex(index);
    Changing();
    FItems[static_cast<size_t>(index)].Object = object;
    Changed();
}

void TStringList::InsertItem(int32_t index, std::string_view s, void* object) {
    Changing();
    FItems.insert(FItems.begin() + index, Item{std::string(s), object});
    Changed();
}

int32_t TStringList::Add(std::string_view s) { return AddObject(s, nullptr); }

int32_t TStringList::AddObject(std::string_view s, void* object) {
    int32_t index = Count();
    if (FSorted && Find(s, index)) {
        if (FDuplicates == dupIgnore) return index;
        if (FDuplicates == dupError) ERaise("String list does not allow duplicates");
    }
    InsertItem(index, s, object);
    return index;
}

void TStringList::AddStrings(const TStringList& src) {
    if (&src == this) {
        const TStringList copy(src);
        AddStrings(copy);
        return;
    }
    BeginUpdate();
    try {
        for (const Item& it : src.FItems) AddObject(it.Text, it.Object);
    } catch (...) {
        EndUpdate();
        throw;
    }
    EndUpdate();
}

void TStringList::Insert(int32_t index, std::string_view s) { InsertObject(index, s, nullptr); }

void TStringList::InsertObject(int32_t index, std::string_view s, void* object) {
    if (FSorted) ERaise("Operation not allowed on sorted list");
    CheckIndex(index, true);
    InsertItem(index, s, object);
}

void TStringList::Delete(int32_t index) {
    CheckIndex(index);
    Changing();
    FItems.erase(FItems.begin() + index);
    Changed();
}

void TStringList::Clear() {
    if (FItems.empty()) return;
    Changing();
    FItems.clear();
    Changed();
}

void TStringList::Exchange(int32_t index1, int32_t index2) {
    CheckIndex(index1);
    CheckIndex(index2);
    Changing();
    std::swap(FItems[static_cast<size_t>(index1)], FItems[static_cast<size_t>(index2)]);
    Changed();
}

void TStringList::Move(int32_t curIndex, int32_t newIndex) {
    if (curIndex == newIndex) return;
    CheckIndex(curIndex);
    CheckIndex(newIndex);
    Changing();
    Item it = std::move(FItems[static_cast<size_t>(curIndex)]);
    FItems.erase(FItems.begin() + curIndex);
    FItems.insert(FItems.begin() + newIndex, std::move(it));
    Changed();
}

void TStringList::Assign(const TStringList& src) {
    if (&src == this) return;
    Changing();
    FItems = src.FItems;
    FSorted = src.FSorted;
    FDuplicates = src.FDuplicates;
    FCaseSensitive = src.FCaseSensitive;
    FNameValueSeparator = src.FNameValueSeparator;
    FDelimiter = src.FDelimiter;
    FQuoteChar = src.FQuoteChar;
    FStrictDelimiter = src.FStrictDelimiter;
    FLineBreak = src.FLineBreak;
    FTrailingLineBreak = src.FTrailingLineBreak;
    Changed();
}

bool TStringList::Equals(const TStringList& other) const {
    if (other.Count() != Count()) return false;
    for (size_t i = 0; i < FItems.size(); ++i)
        if (FItems[i].Text != other.FItems[i].Text) return false;
    return true;
}

int32_t TStringList::CompareStrings(std::string_view a, std::string_view b) const {
    return CompareText(a, b, FCaseSensitive);
}

int32_t TStringList::IndexOf(std::string_view s) const {
    if (FSorted) {
        int32_t i = 0;
        return Find(s, i) ? i : -1;
    }
    for (int32_t i = 0; i < Count(); ++i)
        if (CompareStrings(FItems[static_cast<size_t>(i)].Text, s) == 0) return i;
    return -1;
}

int32_t TStringList::IndexOfName(std::string_view name) const {
    for (int32_t i = 0; i < Count(); ++i) {
        const std::string& t = FItems[static_cast<size_t>(i)].Text;
        const size_t p = t.find(FNameValueSeparator);
        if (p != std::string::npos && CompareStrings(std::string_view(t).substr(0, p), name) == 0) return i;
    }
    return -1;
}

int32_t TStringList::IndexOfObject(const void* object) const {
    for (int32_t i = 0; i < Count(); ++i)
        if (FItems[static_cast<size_t>(i)].Object == object) return i;
    return -1;
}

bool TStringList::Find(std::string_view s, int32_t& index) const {
    // The first of equal lines, so that Add with dupAccept appends behind them.
    int32_t lo = 0, hi = Count() - 1;
    bool found = false;
    while (lo <= hi) {
        const int32_t mid = lo + (hi - lo) / 2;
        const int32_t c = CompareStrings(FItems[static_cast<size_t>(mid)].Text, s);
        if (c < 0) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
            if (c == 0) found = true;
        }
    }
    index = lo;
    return found;
}

void TStringList::Sort() {
    Changing();
    std::stable_sort(FItems.begin(), FItems.end(),
                     [this](const Item& a, const Item& b) { return CompareStrings(a.Text, b.Text) < 0; });
    Changed();
}

void TStringList::CustomSort(const TStringListSortCompare& compare) {
    if (!compare || Count() < 2) return;
    Changing();
    // Sort an index permutation, comparing the lines where they stand now,
    // then apply it once.
    std::vector<int32_t> order(FItems.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int32_t>(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int32_t a, int32_t b) { return compare(*this, a, b) < 0; });
    std::vector<Item> sorted;
    sorted.reserve(FItems.size());
    for (int32_t i : order) sorted.push_back(std::move(FItems[static_cast<size_t>(i)]));
    FItems = std::move(sorted);
    Changed();
}

void TStringList::SetSorted(bool value) {
    if (value == FSorted) return;
    if (value) Sort();
    FSorted = value;
}

void TStringList::SetCaseSensitive(bool value) {
    if (value == FCaseSensitive) return;
    FCaseSensitive = value;
    if (FSorted) Sort();
}

std::string TStringList::Names(int32_t index) const {
    const std::string& t = Get(index);
    const size_t p = t.find(FNameValueSeparator);
    return p == std::string::npos ? std::string() : t.substr(0, p);
}

std::string TStringList::Values(std::string_view name) const {
    const int32_t i = IndexOfName(name);
    return i < 0 ? std::string() : ValueFromIndex(i);
}

void TStringList::SetValues(std::string_view name, std::string_view value) {
    const int32_t i = IndexOfName(name);
    if (value.empty()) {
        if (i >= 0) Delete(i);
        return;
    }
    std::string line(name);
    line += FNameValueSeparator;
    line += value;
    if (i < 0) {
        Add(line);
    } else if (FSorted) {
        // The line's place may change with its text.
        Delete(i);
        Add(line);
    } else {
        Put(i, line);
    }
}

std::string TStringList::ValueFromIndex(int32_t index) const {
    const std::string& t = Get(index);
    const size_t p = t.find(FNameValueSeparator);
    return p == std::string::npos ? std::string() : t.substr(p + 1);
}

void TStringList::SetValueFromIndex(int32_t index, std::string_view value) {
    const std::string name = Names(index);
    if (value.empty()) {
        Delete(index);
        return;
    }
    Put(index, name + FNameValueSeparator + std::string(value));
}

std::string TStringList::Text() const {
    std::string s;
    size_t n = 0;
    for (const Item& it : FItems) n += it.Text.size() + FLineBreak.size();
    s.reserve(n);
    for (size_t i = 0; i < FItems.size(); ++i) {
        s += FItems[i].Text;
        if (i + 1 < FItems.size() || FTrailingLineBreak) s += FLineBreak;
    }
    return s;
}

void TStringList::SetText(std::string_view text) {
    BeginUpdate();
    try {
        Clear();
        size_t at = 0;
        while (at < text.size()) {
            size_t e = at;
            while (e < text.size() && text[e] != '\r' && text[e] != '\n') ++e;
            Add(text.substr(at, e - at));
            if (e < text.size() && text[e] == '\r') {
                ++e;
                if (e < text.size() && text[e] == '\n') ++e;
            } else if (e < text.size()) {
                ++e;
            }
            at = e;
        }
    } catch (...) {
        EndUpdate();
        throw;
    }
    EndUpdate();
}

std::string TStringList::DelimitedText() const {
    std::string s;
    for (size_t i = 0; i < FItems.size(); ++i) {
        const std::string& t = FItems[i].Text;
        bool quote = t.empty();
        for (char c : t)
            if (c == FDelimiter || c == FQuoteChar || (!FStrictDelimiter && static_cast<unsigned char>(c) <= ' '))
                quote = true;
        if (i) s += FDelimiter;
        if (!quote) {
            s += t;
            continue;
        }
        s += FQuoteChar;
        for (char c : t) {
            if (c == FQuoteChar) s += FQuoteChar;
            s += c;
        }
        s += FQuoteChar;
    }
    return s;
}

void TStringList::SetDelimitedText(std::string_view text) {
    auto blank = [&](char c) { return !FStrictDelimiter && static_cast<unsigned char>(c) <= ' '; };
    BeginUpdate();
    try {
        Clear();
        size_t p = 0;
        const size_t n = text.size();
        while (p < n && blank(text[p])) ++p;
        while (p < n) {
            std::string item;
            if (text[p] == FQuoteChar) {
                ++p;
                while (p < n) {
                    if (text[p] == FQuoteChar) {
                        if (p + 1 < n && text[p + 1] == FQuoteChar) {
                            item += FQuoteChar;
                            p += 2;
                            continue;
                        }
                        ++p;
                        break;
                    }
                    item += text[p++];
                }
            } else {
                while (p < n && text[p] != FDelimiter && !blank(text[p])) item += text[p++];
            }
            Add(item);
            while (p < n && blank(text[p])) ++p;
            if (p < n && text[p] == FDelimiter) {
                ++p;
                while (p < n && blank(text[p])) ++p;
                if (p == n) Add("");  // a trailing delimiter ends an empty item
            }
        }
    } catch (...) {
        EndUpdate();
        throw;
    }
    EndUpdate();
}

std::string TStringList::CommaText() const {
    TStringList t;
    t.FItems = FItems;
    return t.DelimitedText();
}

void TStringList::SetCommaText(std::string_view text) {
    const char d = FDelimiter, q = FQuoteChar;
    const bool strict = FStrictDelimiter;
    FDelimiter = ',';
    FQuoteChar = '"';
    FStrictDelimiter = false;
    try {
        SetDelimitedText(text);
    } catch (...) {
        FDelimiter = d;
        FQuoteChar = q;
        FStrictDelimiter = strict;
        throw;
    }
    FDelimiter = d;
    FQuoteChar = q;
    FStrictDelimiter = strict;
}

void TStringList::LoadFromStream(std::istream& stream) {
    std::string data((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    std::string_view v(data);
    if (v.size() >= 3 && v.substr(0, 3) == "\xEF\xBB\xBF") v.remove_prefix(3);
    SetText(v);
}

void TStringList::SaveToStream(std::ostream& stream) const {
    const std::string t = Text();
    stream.write(t.data(), static_cast<std::streamsize>(t.size()));
    if (!stream) ERaise("Stream write error");
}

void TStringList::LoadFromFile(const std::string& fileName) {
    std::ifstream f(fileName, std::ios::binary);
    if (!f) ERaiseFmt("Cannot open file \"%s\"", fileName);
    LoadFromStream(f);
}

void TStringList::SaveToFile(const std::string& fileName) const {
    std::ofstream f(fileName, std::ios::binary | std::ios::trunc);
    if (!f) ERaiseFmt("Cannot create file \"%s\"", fileName);
    SaveToStream(f);
}

void TStringList::SetCapacity(int32_t value) {
    if (value > Count()) FItems.reserve(static_cast<size_t>(value));
}

// ===========================================================================
// TInterfacedStringList
// ===========================================================================
TInterfacedStringList::TInterfacedStringList() {
    // The construction count of 1 guards the object while it is being built;
    // construction ends with no holder.
    FRefCount.fetch_sub(1, std::memory_order_release);
}

TInterfacedStringList::~TInterfacedStringList() = default;

int32_t TInterfacedStringList::_AddRef() noexcept { return FRefCount.fetch_add(1, std::memory_order_relaxed) + 1; }

int32_t TInterfacedStringList::_Release() noexcept {
    const int32_t r = FRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (r == 0) delete this;
    return r;
}

void TInterfacedStringList::Free() {
    if (RefCount() != 0) ERaise("Invalid pointer operation!");
    delete this;
}

// ===========================================================================
// StringList
// ===========================================================================
StringList::StringList(const StringList& src) noexcept : FData(src.FData) {
    if (FData) FData->_AddRef();
}

StringList::StringList(StringList&& src) noexcept : FData(std::exchange(src.FData, nullptr)) {}

StringList& StringList::operator=(const StringList& src) noexcept {
    if (src.FData != FData) {
        if (src.FData) src.FData->_AddRef();
        if (FData) FData->_Release();
        FData = src.FData;
    }
    return *this;
}

StringList& StringList::operator=(StringList&& src) noexcept {
    if (this != &src) {
        if (FData) FData->_Release();
        FData = std::exchange(src.FData, nullptr);
    }
    return *this;
}

StringList::~StringList() {
    if (FData) FData->_Release();
}

StringList::StringList(std::string_view text) { Data().SetText(text); }

StringList::StringList(const TStringList& list) { Data().Assign(list); }

TInterfacedStringList& StringList::Data() const {
    if (!FData) {
        TInterfacedStringList* p = new TInterfacedStringList();
        p->_AddRef();
        FData = p;
    }
    return *FData;
}

}  // namespace rovane
