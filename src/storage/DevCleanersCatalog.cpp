#include <array>

#include "base/Localized.h"
#include "storage/DevCleaners.h"

namespace kestrune {

namespace {

constexpr std::array<CatalogEntry, 9> aiEntries{{
    {"Ollama Models", localizable("Downloaded AI models — back up any custom models before removing"),
     ".ollama/models"},
    {"Hugging Face Hub Cache", localizable("Downloaded models and datasets — may need downloading again"),
     ".cache/huggingface/hub"},
    {"LM Studio Models", localizable("Downloaded or imported models — back up custom models before removing"),
     ".lmstudio/models"},
    {"LM Studio Models (Legacy)", localizable("Models stored by older LM Studio versions — review before removing"),
     ".cache/lm-studio/models"},
    {"ComfyUI Models", localizable("Image-generation models — back up custom models before removing"),
     "ComfyUI/models"},
    {"ComfyUI Models (Documents)", localizable("May include custom models in Documents — back up before removing"),
     "Documents/ComfyUI/models"},
    {"Claude Code Cache", localizable("Cached agent downloads — may need downloading again"), ".claude/downloads"},
    {"Claude Code Shell Snapshots", localizable("Saved terminal setup snapshots — recreated when needed"),
     ".claude/shell-snapshots"},
    {"Claude Code App Cache", localizable("Cached app settings — recreated when needed"), ".claude/statsig"},
}};

constexpr std::array<CatalogEntry, 10> devEntries{{
    {"Xcode DerivedData", localizable("Cached build files — Xcode rebuilds them when needed"),
     "Library/Developer/Xcode/DerivedData"},
    {"Xcode iOS DeviceSupport", localizable("Debugging files for iPhones and iPads you’ve connected"),
     "Library/Developer/Xcode/iOS DeviceSupport"},
    {"Xcode Simulator Caches", localizable("Cached simulator files — recreated when needed"),
     "Library/Developer/CoreSimulator/Caches"},
    {"NPM Global Cache", localizable("Downloaded packages — fetched again on the next install"), ".npm/_cacache"},
    {"PNPM Store", localizable("Downloaded pnpm packages — fetched again when needed"), "Library/pnpm/store"},
    {"PNPM Store (Legacy)", localizable("Older pnpm package downloads — fetched again when needed"), ".pnpm/store"},
    {"Yarn Global Cache", localizable("Downloaded Yarn packages — may need downloading again"), "Library/Caches/Yarn"},
    {"Bun Install Cache", localizable("Downloaded Bun packages — fetched again when needed"), ".bun/install/cache"},
    {"Cargo Registry Cache", localizable("Downloaded Rust packages — fetched again when needed"),
     ".cargo/registry/cache"},
    {"Gradle Caches", localizable("Downloaded packages and cached builds — recreated when needed"), ".gradle/caches"},
}};

constexpr std::array<CatalogEntry, 1> sysEntries{{
    {"User Logs", localizable("Diagnostic logs — review before removing"), "Library/Logs"},
}};

constexpr std::array<std::string_view, 4> forbidden{".claude", ".ssh", ".config", ".cache/huggingface"};

}  // namespace

constinit const std::span<const CatalogEntry> DevCleaners::aiCandidates = aiEntries;
constinit const std::span<const CatalogEntry> DevCleaners::devCandidates = devEntries;
constinit const std::span<const CatalogEntry> DevCleaners::sysCandidates = sysEntries;
constinit const std::span<const std::string_view> DevCleaners::forbiddenTargets = forbidden;

}  // namespace kestrune
