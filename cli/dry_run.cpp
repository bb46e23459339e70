#include "cli/dry_run.h"

#include <system_error>

#include "catalog/catalogue_roots.h"
#include "catalog/minor_planet_roots.h"

namespace fs = std::filesystem;

namespace {

// The regular files of `from` (not `skip`) and, when named, one subtree.
bool CopyFolder(const fs::path& from, const fs::path& to, const char* subtree, const char* skip) {
    std::error_code ec;
    fs::create_directories(to, ec);
    if (ec) return false;
    for (const fs::directory_entry& e : fs::directory_iterator(from, ec)) {
        const std::string name = e.path().filename().string();
        if (e.is_regular_file(ec) && (!skip || name != skip)) {
            fs::copy_file(e.path(), to / name, ec);
        } else if (subtree && name == subtree && e.is_directory(ec)) {
            fs::copy(e.path(), to / name, fs::copy_options::recursive, ec);
        }
        if (ec) return false;
    }
    return !ec;
}

std::string Absolute(const std::string& path) {
    if (path.empty()) return path;
    std::error_code ec;
    const fs::path a = fs::absolute(path, ec);
    return ec ? path : a.generic_string();
}

// The reference folders, read from the working folder's ini file, are
// relative to it; they must keep pointing at the same places after the move.
void AnchorReferenceRoots() {
    const std::string c0 = Absolute(catalogueRoot(0)), c1 = Absolute(catalogueRoot(1)), c2 = Absolute(catalogueRoot(2));
    setCatalogueRoots(c0.c_str(), c1.c_str(), c2.c_str());
    const std::string m0 = Absolute(mapRoot(0)), m1 = Absolute(mapRoot(1)), m2 = Absolute(mapRoot(2));
    setMapRoots(m0.c_str(), m1.c_str(), m2.c_str());
    const std::string p0 = Absolute(minorPlanetRoot(0)), p1 = Absolute(minorPlanetRoot(1));
    setMinorPlanetRoots(p0.c_str(), p1.c_str());
}

}  // namespace

int BeginDryRun(const std::string& legacyRoot, DryRun* run) {
    std::error_code ec;
    run->home = fs::current_path(ec);
    if (ec) return 0;
    const fs::path base = fs::temp_directory_path(ec);
    if (ec) return 0;
    for (int n = 0;; ++n) {
        run->scratch = base / ("ferry2-dry-run-" + std::to_string(n));
        if (fs::create_directory(run->scratch, ec)) break;
        if (ec || n > 999) return 0;
    }
    const fs::path data = run->scratch / "data";
    const fs::path legacy = run->scratch / "legacy";
    if (!CopyFolder(run->home, data, "user", "ferry2.log") || !CopyFolder(legacyRoot, legacy, "log", nullptr)) {
        fs::remove_all(run->scratch, ec);
        return 0;
    }
    AnchorReferenceRoots();
    fs::current_path(data, ec);
    if (ec) {
        fs::remove_all(run->scratch, ec);
        return 0;
    }
    run->legacyRoot = legacy.generic_string();
    run->logPath = "ferry2.log";
    return 1;
}

void EndDryRun(DryRun* run) {
    std::error_code ec;
    fs::current_path(run->home, ec);
    fs::remove_all(run->scratch, ec);
}
