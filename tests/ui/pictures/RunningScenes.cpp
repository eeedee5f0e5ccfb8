#include "tests/ui/pictures/RunningScenes.h"

#include <string>

namespace kestrune {

namespace {

RunningItem app(std::int32_t pid, std::string name, std::int64_t memory, std::string cpu,
                std::vector<std::string> listeners = {}) {
    RunningApplication application;
    application.processIdentifier = pid;
    application.localizedName = name;
    application.activationPolicy = ActivationPolicy::regular;
    const std::string path = "/opt/" + name + "/" + name;
    return {pid, std::move(name), path, memory, std::move(cpu), application, std::move(listeners), 1};
}

RunningItem process(std::int32_t pid, std::string name, std::int64_t memory, std::string cpu,
                    std::vector<std::string> listeners = {}) {
    const std::string path = "/usr/bin/" + name;
    return {pid, std::move(name), path, memory, std::move(cpu), {}, std::move(listeners), 1};
}

std::vector<RunningItem> ordinary() {
    return {app(2210, "Xcode", 3842, "24.1"),
            app(1184, "Safari", 2107, "6.3"),
            process(5521, "node", 1394, "11.8", {"*:3000", "*:9229"}),
            app(7730, "LM Studio", 1226, "0.4", {"127.0.0.1:1234"}),
            app(3308, "Docker Desktop", 1102, "3.9"),
            process(9127, "llama-server", 918, "0.0", {"127.0.0.1:8080"}),
            app(1502, "Terminal", 214, "0.2"),
            process(5610, "vite", 188, "1.1", {"[::1]:5173"}),
            app(1377, "Notes", 142, "0.0")};
}

std::vector<RunningItem> hostile() {
    std::vector<std::string> many;
    for (int port = 3000; port < 3040; ++port) {
        many.push_back("127.0.0.1:" + std::to_string(port));
    }
    RunningItem broken = app(11, "\xff\xfe bytes \xc3", 12, "0.1");
    broken.app->iconNames = {"/nowhere/at/all.png"};
    return {app(1, "<b>Bold</b> & <a href='x'>link</a> &File", 1'234'567, "1600.0", {"*:80"}),
            app(2'147'483'647, std::string(300, 'W'), 98'765, "100.0", many),
            process(3, "a name\nof two lines\tand a tab, with quite some more words to follow", 5, "", {"*:22"}),
            app(4, "", 7, "0.0"),
            app(5, "Ωmega – ünïcode 日本語のアプリ", 88, "2.5"),
            process(6, "node", 300, "1.0", many),
            process(7, "node", 280, "1.0", {"*:5000"}),
            broken};
}

std::vector<RunningItem> crowd() {
    std::vector<RunningItem> items;
    for (int index = 0; index < 10'000; ++index) {
        items.push_back(process(1000 + index, index % 3 == 0 ? "node" : "python3.11", 9000 - index, "0.3",
                                {"127.0.0.1:" + std::to_string(10'000 + index)}));
    }
    return items;
}

void list(StoreFixture& fixture, std::vector<RunningItem> items) {
    fixture.store().running.set(std::move(items));
    fixture.store().processesListed.set(true);
}

void protectMany(StoreFixture& fixture) {
    fixture.store().protectedApps.set({"Safari", "Terminal", "Xcode", "Docker Desktop", "Visual Studio Code", "Mail",
                                       "IntelliJ IDEA Community Edition", "ollama", "postgres", "Notes",
                                       "An application whose name is longer than anybody would want it to be", "Zed"});
}

}  // namespace

std::vector<RunningScene> runningAppsScenes() {
    return {{"apps-before", [](StoreFixture&) {}},
            {"apps-empty", [](StoreFixture& fixture) { list(fixture, {}); }},
            {"apps",
             [](StoreFixture& fixture) {
                 list(fixture, ordinary());
                 fixture.store().protectedApps.set({"Safari", "Terminal"});
             }},
            {"apps-long",
             [](StoreFixture& fixture) {
                 list(fixture, hostile());
                 fixture.applications.frontmostIsTold = false;
             }},
            {"apps-protected",
             [](StoreFixture& fixture) {
                 list(fixture, ordinary());
                 protectMany(fixture);
             }},
            {"apps-10000", [](StoreFixture& fixture) { list(fixture, crowd()); }}};
}

std::vector<RunningScene> aiToolsScenes() {
    constexpr std::int64_t megabyte = 1'000'000;
    const auto full = [](StoreFixture& fixture) {
        fixture.addCache("Hugging Face Hub Cache", 14'070 * megabyte);
        fixture.addCache("Ollama Models", 11'930 * megabyte);
        fixture.addCache("Gradle Caches", 6'310 * megabyte);
        fixture.scan();
        list(fixture, {process(8412, "ollama", 6184, "88.0"), app(7730, "LM Studio", 1226, "0.4"),
                       process(9127, "llama-server", 918, "0.0"), process(5521, "node", 300, "0.1")});
        fixture.store().protectedApps.set({"ollama"});
    };
    return {{"ai-before", [](StoreFixture&) {}},
            {"ai-scanning",
             [](StoreFixture& fixture) {
                 fixture.store().scan();
                 fixture.store().operationProgress.set({3, 20, "Gradle Caches"});
             }},
            {"ai-empty",
             [](StoreFixture& fixture) {
                 fixture.scan();
                 list(fixture, {});
             }},
            {"ai", full},
            {"ai-notes", [full](StoreFixture& fixture) {
                 full(fixture);
                 fixture.store().scanNotes.set({"Couldn't inspect Ollama Models. Check access in System Settings."});
                 fixture.store().message.set("Process changed or couldn't be stopped. Rescan before retrying.");
             }}};
}

std::vector<RunningScene> portScenes() {
    return {{"ports-before", [](StoreFixture&) {}},
            {"ports-empty", [](StoreFixture& fixture) { list(fixture, {}); }},
            {"ports",
             [](StoreFixture& fixture) {
                 std::vector<RunningItem> items = ordinary();
                 items.push_back(process(8412, "ollama", 120, "0.0", {"127.0.0.1:11434"}));
                 list(fixture, items);
                 fixture.store().protectedApps.set({"ollama"});
             }},
            {"ports-long", [](StoreFixture& fixture) { list(fixture, hostile()); }},
            {"ports-10000", [](StoreFixture& fixture) { list(fixture, crowd()); }}};
}

}  // namespace kestrune
