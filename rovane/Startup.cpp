// Module start and stop at library load and unload. Each module's
// initialisation counts its entries, so a program may also call them itself;
// the modules start in dependency order and stop in reverse.
#include "rovane/scalars/Scalars.h"
#include "rovane/storage/ObjectCache.h"

namespace rovane {
namespace {

struct LibraryLifetime {
    LibraryLifetime() {
        InitScalars();
        InitContainers();
    }
    ~LibraryLifetime() {
        FinalizeContainers();
        FinalizeScalars();
    }
};

const LibraryLifetime lifetime;

}  // namespace
}  // namespace rovane
