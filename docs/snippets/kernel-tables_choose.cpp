// Which kernel table is in use, and switching to the reference table and back.
#include <rovane/Rovane.h>

#include <cstdio>

int main() {
    using namespace rovane;
    std::printf("in use: %s, chosen at start: %s, widest: %s\n", PrimitiveIsaName(PrimitiveIsa()),
                PrimitiveIsaName(DefaultPrimitiveIsa()), PrimitiveIsaName(BestPrimitiveIsa()));
    if (!SetPrimitiveIsa(piReference)) return 1;  // every processor runs the reference table
    if (PrimitiveIsa() != piReference) return 1;
    if (!SetPrimitiveIsa(DefaultPrimitiveIsa())) return 1;
    return PrimitiveIsa() == DefaultPrimitiveIsa() ? 0 : 1;
}
