// Errors: the exception classes, their texts, and ConditionCheck.
#include <rovane/Rovane.h>

#include <cstdio>
#include <string>

using namespace rovane;

int main() {
    TVec x, y;
    x.SetIt({1, 2, 3});
    y.SetIt({1, 2});

    std::string text;
    try {
        x.Add(y, 0, 0, 3);                   // y has only 2 elements
    } catch (const ERovaneRangeError& e) {   // a range: index, length
        text = e.what();
    } catch (const ERovaneException& e) {    // the root of all the library's errors
        text = std::string("other: ") + e.what();
    }
    std::printf("%s\n", text.c_str());       // the text tells the failed test, not the method

    bool invalid = false;
    try {
        x.Sin(x);
    } catch (const ERovaneInvalidArgument&) {   // a wrong argument
        invalid = true;
    }

    const bool usable = x.Length() == 3 && x.Values[2] == 3;   // a refused call leaves x as it was

    x.SetConditionCheck(false);   // no checks on x from now on: faster, and wrong input is undefined
    x.Add(1.0);
    x.SetConditionCheck(true);

    const bool ok = text == "X params out of range: XIndex: 0, Len: 3 , X.Length: 2" && invalid && usable &&
                    x.Values[0] == 2;
    return ok ? 0 : 1;
}
