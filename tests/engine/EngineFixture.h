#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "engine/SystemEngine.h"
#include "tests/fakes/FakeHostStatistics.h"
#include "tests/fakes/FakeLoginItem.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakePowerSources.h"
#include "tests/fakes/FakePreferences.h"
#include "tests/fakes/FakeProcessRunner.h"
#include "tests/fakes/FakeRunningApplications.h"
#include "tests/fakes/FakeSystemTools.h"
#include "tests/fakes/FakeTrash.h"
#include "tests/fakes/FakeVolumeInfo.h"
#include "tests/fakes/ManualQueues.h"

namespace kestrune {

/// An engine on fakes. This program is process 4711.
class EngineFixture : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    /// Every notification since the last call; each must stand under the program's name.
    Texts told() {
        mainQueue.runPosted();
        Texts messages;
        for (const auto& [title, body] : std::exchange(center.delivered, {})) {
            EXPECT_EQ(title, "Kestrune");
            messages.push_back(body);
        }
        return messages;
    }

    static constexpr std::int32_t thisProgram = 4711;

    FakeHostStatistics host;
    FakePowerSources power;
    FakeVolumeInfo volumes;
    FakeProcessRunner runner;
    FakeSystemTools tools;
    FakePreferences preferences;
    FakeNotificationCenter center;
    ManualClock clock;
    ManualMainQueue mainQueue;
    FakeRunningApplications applications;
    FakeTrash trash;
    FakeLoginItem loginItem;
    SystemEngineParts parts{host,  power,     volumes,      runner, tools,     preferences,  center,
                            clock, mainQueue, applications, trash,  loginItem, "/home/anna", thisProgram};
    SystemEngine engine{parts};
};

}  // namespace kestrune
