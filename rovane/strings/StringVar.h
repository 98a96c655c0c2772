// The string list of the library and its value record.
//
// TStringList    an ordered list of strings, each with an optional object
//                pointer (not owned), with sorting, name=value pairs,
//                delimited text and file forms.
// TInterfacedStringList
//                a string list with an atomic reference count, created on the
//                heap and freed by its last release.
// StringList     a value record over a counted TInterfacedStringList: the list
//                appears on first use, copies share it, and it goes with the
//                last copy.
//
// Comparisons follow CaseSensitive (default false: ASCII letters compare
// without case). Text joins the lines with LineBreak (default "\n") and, with
// TrailingLineBreak (default true), ends with one; setting Text or loading a
// file splits at "\r\n", "\n" and "\r" alike.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "rovane/scalars/Export.h"

namespace rovane {

enum TDuplicates : int32_t { dupIgnore, dupAccept, dupError };

class TStringList;
using TStringListSortCompare = std::function<int32_t(const TStringList& list, int32_t index1, int32_t index2)>;
using TStringListNotify = std::function<void(TStringList& sender)>;

class ROVANE_API TStringList {
public:
    TStringList() = default;
    TStringList(const TStringList& src);
    TStringList& operator=(const TStringList& src);
    virtual ~TStringList();

    // ---- lines -------------------------------------------------------------
    int32_t Count() const { return static_cast<int32_t>(FItems.size()); }
    // Line i; raises "List index out of bounds (%d)" outside 0..Count-1.
    const std::string& Get(int32_t index) const;
    const std::string& Strings(int32_t index) const { return Get(index); }
    const std::string& operator[](int32_t index) const { return Get(index); }
    // Replaces line i ("Operation not allowed on sorted list" when Sorted).
    void Put(int32_t index, std::string_view s);
    void* Objects(int32_t index) const;
    void PutObject(int32_t index, void* object);

    // Appends (or, when Sorted, inserts in order, with Duplicates deciding
    // about an equal line); returns the index of the line.
    int32_t Add(std::string_view s);
    int32_t AddObject(std::string_view s, void* object);
    void Append(std::string_view s) { Add(s); }
    void AddStrings(const TStringList& src);
    void Insert(int32_t index, std::string_view s);
    void InsertObject(int32_t index, std::string_view s, void* object);
    void Delete(int32_t index);
    void Clear();
    void Exchange(int32_t index1, int32_t index2);
    void Move(int32_t curIndex, int32_t newIndex);
    // Copies lines, objects and settings.
    void Assign(const TStringList& src);
    // Equal when the lines are equal, in order (objects and settings aside).
    bool Equals(const TStringList& other) const;
    bool operator==(const TStringList& other) const { return Equals(other); }

    // ---- search and order -------------------------------------------------
    int32_t IndexOf(std::string_view s) const;
    int32_t IndexOfName(std::string_view name) const;
    int32_t IndexOfObject(const void* object) const;
    // Binary search of a sorted list: true when found; Index is the position
    // of the line or the one where it would be inserted.
    bool Find(std::string_view s, int32_t& index) const;
    // Stable sort by CompareStrings.
    void Sort();
    void CustomSort(const TStringListSortCompare& compare);
    // <0, 0, >0 by CaseSensitive.
    int32_t CompareStrings(std::string_view a, std::string_view b) const;
    bool Sorted() const { return FSorted; }
    void SetSorted(bool value);
    TDuplicates Duplicates() const { return FDuplicates; }
    void SetDuplicates(TDuplicates value) { FDuplicates = value; }
    bool CaseSensitive() const { return FCaseSensitive; }
    void SetCaseSensitive(bool value);

    // ---- name=value pairs -------------------------------------------------
    char NameValueSeparator() const { return FNameValueSeparator; }
    void SetNameValueSeparator(char value) { FNameValueSeparator = value; }
    // The part before the first separator; empty for a line without one.
    std::string Names(int32_t index) const;
    // Value of the first line named Name; empty when there is none.
    std::string Values(std::string_view name) const;
    // Sets the value of Name, adding a line when needed; an empty value
    // deletes the line.
    void SetValues(std::string_view name, std::string_view value);
    std::string ValueFromIndex(int32_t index) const;
    void SetValueFromIndex(int32_t index, std::string_view value);

    // ---- text forms --------------------------------------------------------
    std::string Text() const;
    void SetText(std::string_view text);
    std::string TextStr() const { return Text(); }
    void SetTextStr(std::string_view text) { SetText(text); }
    const std::string& LineBreak() const { return FLineBreak; }
    void SetLineBreak(std::string_view value) { FLineBreak = std::string(value); }
    bool TrailingLineBreak() const { return FTrailingLineBreak; }
    void SetTrailingLineBreak(bool value) { FTrailingLineBreak = value; }
    // Items joined by Delimiter; an item holding the delimiter, the quote
    // character, a blank or a control character (only the first two when
    // StrictDelimiter), or an empty item, is quoted with QuoteChar doubled
    // inside. Setting parses that form back.
    std::string DelimitedText() const;
    void SetDelimitedText(std::string_view text);
    // DelimitedText with ',' and '"', not strict.
    std::string CommaText() const;
    void SetCommaText(std::string_view text);
    char Delimiter() const { return FDelimiter; }
    void SetDelimiter(char value) { FDelimiter = value; }
    char QuoteChar() const { return FQuoteChar; }
    void SetQuoteChar(char value) { FQuoteChar = value; }
    bool StrictDelimiter() const { return FStrictDelimiter; }
    void SetStrictDelimiter(bool value) { FStrictDelimiter = value; }

    // ---- files and streams -------------------------------------------------
    // Bytes as they stand (UTF-8 where the text is); a leading UTF-8 byte
    // order mark is skipped on loading. Raises "Cannot open file \"%s\"" and
    // "Cannot create file \"%s\"".
    void LoadFromFile(const std::string& fileName);
    void SaveToFile(const std::string& fileName) const;
    void LoadFromStream(std::istream& stream);
    void SaveToStream(std::ostream& stream) const;

    // ---- capacity and change notification ---------------------------------
    int32_t Capacity() const { return static_cast<int32_t>(FItems.capacity()); }
    void SetCapacity(int32_t value);
    // OnChanging before and OnChange after each change, while no update is open.
    void BeginUpdate() { ++FUpdateCount; }
    void EndUpdate();
    int32_t UpdateCount() const { return FUpdateCount; }
    const TStringListNotify& OnChange() const { return FOnChange; }
    void SetOnChange(TStringListNotify handler) { FOnChange = std::move(handler); }
    const TStringListNotify& OnChanging() const { return FOnChanging; }
    void SetOnChanging(TStringListNotify handler) { FOnChanging = std::move(handler); }

    // ---- enumeration (GetEnumerator) ---------------------------------------
    class const_iterator {
    public:
        using value_type = std::string;
        using difference_type = std::ptrdiff_t;
        const_iterator() = default;
        const_iterator(const TStringList* l, int32_t i) : fList(l), fIndex(i) {}
        const std::string& operator*() const { return fList->FItems[static_cast<size_t>(fIndex)].Text; }
        const std::string* operator->() const { return &**this; }
        const_iterator& operator++() {
            ++fIndex;
            return *this;
        }
        const_iterator operator++(int) {
            const_iterator t = *this;
            ++fIndex;
            return t;
        }
        bool operator==(const const_iterator& o) const { return fIndex == o.fIndex && fList == o.fList; }

    private:
        const TStringList* fList = nullptr;
        int32_t fIndex = 0;
    };
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, Count()); }
    const_iterator GetEnumerator() const { return begin(); }

protected:
    void Changing();
    void Changed();
    void CheckIndex(int32_t index, bool allowEnd = false) const;
    void InsertItem(int32_t index, std::string_view s, void* object);

private:
    struct Item {
        std::string Text;
        void* Object = nullptr;
    };
    std::vector<Item> FItems;
    bool FSorted = false;
    TDuplicates FDuplicates = dupIgnore;
    bool FCaseSensitive = false;
    char FNameValueSeparator = '=';
    char FDelimiter = ',';
    char FQuoteChar = '"';
    bool FStrictDelimiter = false;
    std::string FLineBreak = "\n";
    bool FTrailingLineBreak = true;
    int32_t FUpdateCount = 0;
    TStringListNotify FOnChange, FOnChanging;
};

// A string list with an atomic reference count. It lives on the heap: the
// count starts at 1 while the constructor runs and is back at 0 when it
// returns; _AddRef and _Release are interlocked and the release that reaches
// 0 destroys the list. Free, the explicit free, raises
// "Invalid pointer operation!" while the list is shared (count not 0) and
// leaves it alive.
class ROVANE_API TInterfacedStringList : public TStringList {
public:
    TInterfacedStringList();
    TInterfacedStringList(const TInterfacedStringList&) = delete;
    TInterfacedStringList& operator=(const TInterfacedStringList&) = delete;

    int32_t RefCount() const { return FRefCount.load(std::memory_order_acquire); }
    int32_t _AddRef() noexcept;
    int32_t _Release() noexcept;
    void Free();

protected:
    ~TInterfacedStringList() override;

private:
    std::atomic<int32_t> FRefCount{1};
};

// Value record over a shared TInterfacedStringList.
class ROVANE_API StringList {
public:
    StringList() noexcept = default;
    StringList(const StringList& src) noexcept;
    StringList(StringList&& src) noexcept;
    StringList& operator=(const StringList& src) noexcept;
    StringList& operator=(StringList&& src) noexcept;
    ~StringList();

    // Conversions: from text (its lines), from a list (a copy of its lines),
    // to text, and to the list inside.
    StringList(std::string_view text);
    StringList(const char* text) : StringList(std::string_view(text)) {}
    StringList(const TStringList& list);
    operator std::string() const { return Text(); }
    operator TStringList&() const { return Data(); }

    // The list, made on first use.
    TInterfacedStringList& Data() const;
    TStringList* operator->() const { return &Data(); }
    // References to the list now (0 before first use).
    int32_t RefCount() const { return FData ? FData->RefCount() : 0; }

    bool operator==(const StringList& other) const { return Equals(other.Data()); }
    bool operator==(const TStringList& other) const { return Equals(other); }

    // ---- members forwarded to the list -------------------------------------
    int32_t Add(std::string_view s) const { return Data().Add(s); }
    int32_t AddObject(std::string_view s, void* o) const { return Data().AddObject(s, o); }
    void AddStrings(const TStringList& src) const { Data().AddStrings(src); }
    void Append(std::string_view s) const { Data().Append(s); }
    // A deep copy; assignment shares.
    void Assign(const TStringList& src) const { Data().Assign(src); }
    void BeginUpdate() const { Data().BeginUpdate(); }
    void EndUpdate() const { Data().EndUpdate(); }
    void Clear() const { Data().Clear(); }
    void CustomSort(const TStringListSortCompare& c) const { Data().CustomSort(c); }
    void Delete(int32_t i) const { Data().Delete(i); }
    bool Equals(const TStringList& other) const { return Data().Equals(other); }
    void Exchange(int32_t i, int32_t j) const { Data().Exchange(i, j); }
    bool Find(std::string_view s, int32_t& index) const { return Data().Find(s, index); }
    const std::string& Get(int32_t i) const { return Data().Get(i); }
    const std::string& operator[](int32_t i) const { return Data().Get(i); }
    TStringList::const_iterator begin() const { return Data().begin(); }
    TStringList::const_iterator end() const { return Data().end(); }
    TStringList::const_iterator GetEnumerator() const { return Data().begin(); }
    int32_t IndexOf(std::string_view s) const { return Data().IndexOf(s); }
    int32_t IndexOfName(std::string_view n) const { return Data().IndexOfName(n); }
    int32_t IndexOfObject(const void* o) const { return Data().IndexOfObject(o); }
    void Insert(int32_t i, std::string_view s) const { Data().Insert(i, s); }
    void InsertObject(int32_t i, std::string_view s, void* o) const { Data().InsertObject(i, s, o); }
    void LoadFromFile(const std::string& f) const { Data().LoadFromFile(f); }
    void LoadFromStream(std::istream& s) const { Data().LoadFromStream(s); }
    void Move(int32_t from, int32_t to) const { Data().Move(from, to); }
    void Put(int32_t i, std::string_view s) const { Data().Put(i, s); }
    void PutObject(int32_t i, void* o) const { Data().PutObject(i, o); }
    void SaveToFile(const std::string& f) const { Data().SaveToFile(f); }
    void SaveToStream(std::ostream& s) const { Data().SaveToStream(s); }
    void Sort() const { Data().Sort(); }

    int32_t Capacity() const { return Data().Capacity(); }
    void SetCapacity(int32_t v) const { Data().SetCapacity(v); }
    bool CaseSensitive() const { return Data().CaseSensitive(); }
    void SetCaseSensitive(bool v) const { Data().SetCaseSensitive(v); }
    std::string CommaText() const { return Data().CommaText(); }
    void SetCommaText(std::string_view v) const { Data().SetCommaText(v); }
    int32_t Count() const { return Data().Count(); }
    std::string DelimitedText() const { return Data().DelimitedText(); }
    void SetDelimitedText(std::string_view v) const { Data().SetDelimitedText(v); }
    char Delimiter() const { return Data().Delimiter(); }
    void SetDelimiter(char v) const { Data().SetDelimiter(v); }
    TDuplicates Duplicates() const { return Data().Duplicates(); }
    void SetDuplicates(TDuplicates v) const { Data().SetDuplicates(v); }
    const std::string& LineBreak() const { return Data().LineBreak(); }
    void SetLineBreak(std::string_view v) const { Data().SetLineBreak(v); }
    std::string Name(int32_t i) const { return Data().Names(i); }
    char NameValueSeparator() const { return Data().NameValueSeparator(); }
    void SetNameValueSeparator(char v) const { Data().SetNameValueSeparator(v); }
    void* Object(int32_t i) const { return Data().Objects(i); }
    void SetObject(int32_t i, void* o) const { Data().PutObject(i, o); }
    void SetOnChange(TStringListNotify h) const { Data().SetOnChange(std::move(h)); }
    void SetOnChanging(TStringListNotify h) const { Data().SetOnChanging(std::move(h)); }
    char QuoteChar() const { return Data().QuoteChar(); }
    void SetQuoteChar(char v) const { Data().SetQuoteChar(v); }
    bool Sorted() const { return Data().Sorted(); }
    void SetSorted(bool v) const { Data().SetSorted(v); }
    bool StrictDelimiter() const { return Data().StrictDelimiter(); }
    void SetStrictDelimiter(bool v) const { Data().SetStrictDelimiter(v); }
    std::string Text() const { return Data().Text(); }
    void SetText(std::string_view v) const { Data().SetText(v); }
    std::string TextStr() const { return Data().TextStr(); }
    void SetTextStr(std::string_view v) const { Data().SetTextStr(v); }
    bool TrailingLineBreak() const { return Data().TrailingLineBreak(); }
    void SetTrailingLineBreak(bool v) const { Data().SetTrailingLineBreak(v); }
    std::string Value(std::string_view name) const { return Data().Values(name); }
    void SetValue(std::string_view name, std::string_view v) const { Data().SetValues(name, v); }
    std::string ValueFromIndex(int32_t i) const { return Data().ValueFromIndex(i); }
    void SetValueFromIndex(int32_t i, std::string_view v) const { Data().SetValueFromIndex(i, v); }

private:
    mutable TInterfacedStringList* FData = nullptr;
};

}  // namespace rovane
