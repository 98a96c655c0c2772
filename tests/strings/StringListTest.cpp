// The string list, its counted form and the StringList record.
#include <gtest/gtest.h>

#include "NumericTestUtil.h"
#include <rovane/Rovane.h>

#include <atomic>
#include <cstdio>
#include <sstream>
#include <thread>
#include <vector>

namespace rovane::test {
namespace {

using test_util::ExpectMessage;

std::vector<std::string> Lines(const TStringList& l) { return std::vector<std::string>(l.begin(), l.end()); }

TEST(TStringList, EditingMembers) {
    TStringList l;
    EXPECT_EQ(l.Add("b"), 0);
    l.Append("d");
    l.Insert(1, "c");
    l.Insert(0, "a");
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"a", "b", "c", "d"}));
    l.Delete(2);
    l.Exchange(0, 2);
    l.Move(0, 1);
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"b", "d", "a"}));
    l.Put(1, "x");
    EXPECT_EQ(l[1], "x");
    EXPECT_EQ(l.Strings(2), "a");
    int tag = 3;
    l.AddObject("o", &tag);
    EXPECT_EQ(l.Objects(3), &tag);
    EXPECT_EQ(l.IndexOfObject(&tag), 3);
    for (int bad : {-1, 4})
        ExpectMessage<ERovaneRangeError>([&] { (void)l.Get(bad); },
                                         "List index out of bounds (" + std::to_string(bad) + ")");
    ExpectMessage<ERovaneRangeError>([&] { l.Insert(6, "z"); }, "List index out of bounds (6)");
    l.Clear();
    EXPECT_EQ(l.Count(), 0);
}

TEST(TStringList, SortFindAndDuplicates) {
    TStringList l;
    l.SetText("pear\nApple\nfig\napple\n");
    l.Sort();
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"Apple", "apple", "fig", "pear"}));  // stable, case-blind
    int32_t at = -1;
    l.SetSorted(true);
    EXPECT_TRUE(l.Find("FIG", at));
    EXPECT_EQ(at, 2);
    EXPECT_FALSE(l.Find("grape", at));
    EXPECT_EQ(at, 3);
    EXPECT_EQ(l.Add("grape"), 3);
    EXPECT_EQ(l.Add("PEAR"), 4);  // dupIgnore: the index of the line already there
    EXPECT_EQ(l.Count(), 5);
    l.SetDuplicates(dupError);
    ExpectMessage<ERovaneException>([&] { l.Add("fig"); }, "String list does not allow duplicates");
    ExpectMessage<ERovaneException>([&] { l.Insert(0, "a"); }, "Operation not allowed on sorted list");
    ExpectMessage<ERovaneException>([&] { l.Put(0, "a"); }, "Operation not allowed on sorted list");
    l.SetDuplicates(dupAccept);
    l.Add("fig");
    EXPECT_EQ(l.IndexOf("Fig"), 2);
    l.SetCaseSensitive(true);
    EXPECT_EQ(l.IndexOf("Fig"), -1);
    EXPECT_EQ(l[0], "Apple");  // upper case first once case counts

    TStringList u;
    u.SetText("c\na\nb");
    u.CustomSort([](const TStringList& s, int32_t i, int32_t j) { return s[j].compare(s[i]); });  // descending
    EXPECT_EQ(Lines(u), (std::vector<std::string>{"c", "b", "a"}));
    EXPECT_EQ(u.IndexOf("a"), 2);
}

TEST(TStringList, NameValuePairs) {
    TStringList l;
    l.SetText("host=example\nport=80\nflag\n");
    EXPECT_EQ(l.Names(0), "host");
    EXPECT_EQ(l.Names(2), "");
    EXPECT_EQ(l.Values("PORT"), "80");
    EXPECT_EQ(l.Values("missing"), "");
    EXPECT_EQ(l.IndexOfName("port"), 1);
    EXPECT_EQ(l.IndexOfName("flag"), -1);
    l.SetValues("port", "8080");
    l.SetValues("user", "me");
    EXPECT_EQ(l[1], "port=8080");
    EXPECT_EQ(l[3], "user=me");
    l.SetValues("host", "");
    EXPECT_EQ(l.IndexOfName("host"), -1);
    EXPECT_EQ(l.ValueFromIndex(0), "8080");
    l.SetNameValueSeparator(':');
    l.Add("a:b=c");
    EXPECT_EQ(l.Values("a"), "b=c");
}

TEST(TStringList, TextForms) {
    TStringList l;
    l.SetText("one\r\ntwo\rthree\n\nfive");
    EXPECT_EQ(Lines(l), (std::vector<std::string>{"one", "two", "three", "", "five"}));
    EXPECT_EQ(l.Text(), "one\ntwo\nthree\n\nfive\n");
    l.SetLineBreak("\r\n");
    l.SetTrailingLineBreak(false);
    EXPECT_EQ(l.TextStr(), "one\r\ntwo\r\nthree\r\n\r\nfive");

    struct Case {
        std::vector<std::string> lines;
        bool strict;
        std::string text;
    };
    const Case cases[] = {
        {{"a", "b c", "", "q\"x", "d,e"}, false, "a,\"b c\",\"\",\"q\"\"x\",\"d,e\""},
        {{"a", "b c", "x"}, true, "a,b c,x"},
        {{"1", "2"}, false, "1,2"},
    };
    for (const Case& c : cases) {
        TStringList t;
        for (const std::string& s : c.lines) t.Add(s);
        t.SetStrictDelimiter(c.strict);
        EXPECT_EQ(t.DelimitedText(), c.text);
        TStringList back;
        back.SetStrictDelimiter(c.strict);
        back.SetDelimitedText(c.text);
        EXPECT_EQ(Lines(back), c.lines);
    }
    TStringList c;
    c.SetCommaText("  x  y,,\"z\"\"\" ,");
    EXPECT_EQ(Lines(c), (std::vector<std::string>{"x", "y", "", "z\"", ""}));
    c.SetDelimiter(';');
    c.SetQuoteChar('\'');
    EXPECT_EQ(c.CommaText(), "x,y,\"\",\"z\"\"\",\"\"");
    EXPECT_EQ(c.DelimitedText(), "x;y;'';z\";''");
}

TEST(TStringList, FilesStreamsAndNotifications) {
    const std::string file = ::testing::TempDir() + "rovane_stringlist.txt";
    TStringList l;
    l.SetText("alpha\nbeta\n");
    l.SaveToFile(file);
    TStringList m;
    m.LoadFromFile(file);
    EXPECT_TRUE(m.Equals(l));
    std::stringstream bom("\xEF\xBB\xBFx\r\ny");
    m.LoadFromStream(bom);
    EXPECT_EQ(Lines(m), (std::vector<std::string>{"x", "y"}));
    std::remove(file.c_str());
    ExpectMessage<ERovaneException>([&] { m.LoadFromFile(file); }, "Cannot open file \"" + file + "\"");

    int changing = 0, changed = 0;
    m.SetOnChanging([&](TStringList&) { ++changing; });
    m.SetOnChange([&](TStringList&) { ++changed; });
    m.Add("z");
    EXPECT_EQ(changed, 1);
    m.BeginUpdate();
    m.Add("1");
    m.Add("2");
    m.EndUpdate();
    EXPECT_EQ(changing, 1);
    EXPECT_EQ(changed, 2);
    TStringList copy(m);
    EXPECT_TRUE(copy == m);
    copy.Put(0, "other");
    EXPECT_FALSE(copy == m);
}

TEST(TInterfacedStringList, CountRules) {
    auto* p = new TInterfacedStringList();
    EXPECT_EQ(p->RefCount(), 0);  // the construction count is given back
    p->_AddRef();
    p->_AddRef();
    ExpectMessage<ERovaneException>([&] { p->Free(); }, "Invalid pointer operation!");
    EXPECT_EQ(p->_Release(), 1);  // still alive after the refused free
    p->Add("x");
    EXPECT_EQ(p->_Release(), 0);  // destroyed here; AddressSanitizer would see a leak or a double free

    auto* q = new TInterfacedStringList();
    q->Free();  // not shared: the explicit free is allowed
}

TEST(StringListRecord, LazyCreationAndSharing) {
    StringList a;
    EXPECT_EQ(a.RefCount(), 0);
    EXPECT_EQ(a.Count(), 0);  // reading makes the list
    EXPECT_EQ(a.RefCount(), 1);
    StringList b = a;
    EXPECT_EQ(a.RefCount(), 2);
    b.Add("x");
    EXPECT_EQ(a[0], "x");  // a copy shares the list
    StringList c;
    c.Assign(a.Data());  // Assign copies
    c.Add("y");
    EXPECT_EQ(a.Count(), 1);
    {
        StringList d = c;
        EXPECT_EQ(c.RefCount(), 2);
    }
    EXPECT_EQ(c.RefCount(), 1);
    b = c;
    EXPECT_EQ(a.RefCount(), 1);
    EXPECT_EQ(c.RefCount(), 2);
    StringList moved = std::move(b);
    EXPECT_EQ(c.RefCount(), 2);
    ExpectMessage<ERovaneException>([&] { c.Data().Free(); }, "Invalid pointer operation!");
}

TEST(StringListRecord, ConversionsAndEquality) {
    StringList a("one\ntwo");
    StringList b = std::string_view("one\ntwo\n");
    EXPECT_TRUE(a == b);
    StringList c("two\none");
    EXPECT_FALSE(a == c);  // order counts
    TStringList plain;
    plain.SetText("one\ntwo");
    EXPECT_TRUE(a == plain);
    StringList d(plain);
    plain.Add("three");
    EXPECT_EQ(d.Count(), 2);  // a converted list is a copy
    std::string text = a;
    EXPECT_EQ(text, "one\ntwo\n");
    TStringList& inner = a;
    EXPECT_EQ(&inner, &a.Data());
    a.SetValue("k", "v");
    EXPECT_EQ(a.Value("k"), "v");
    EXPECT_EQ(a.Name(2), "k");
}

TEST(StringListRecord, CountIsAtomicAcrossThreads) {
    StringList shared("x");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&shared] {
            for (int i = 0; i < 20000; ++i) {
                StringList copy = shared;
                (void)copy;
            }
        });
    for (std::thread& t : threads) t.join();
    EXPECT_EQ(shared.RefCount(), 1);
}

}  // namespace
}  // namespace rovane::test
