#pragma once

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "Platform/Application.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class ApplicationContract : public Contract {
protected:
    [[nodiscard]] Application& application() { return platform().application(); }
};

TEST_P(ApplicationContract, NothingLimitsAnApplicationInTheForeground) {
    EXPECT_EQ(application().backgroundTimeRemaining(), Application::foreground);
}

TEST_P(ApplicationContract, EachGrantOfBackgroundTimeHasANameOfItsOwn) {
    int expired = 0;

    const Application::BackgroundTask first = application().beginBackgroundTask("sync", [&] { ++expired; });
    const Application::BackgroundTask second = application().beginBackgroundTask("sync", [&] { ++expired; });

    EXPECT_NE(first, 0U);
    EXPECT_NE(second, 0U);
    EXPECT_NE(first, second);
    application().endBackgroundTask(first);
    application().endBackgroundTask(second);
    rig->pass(std::chrono::milliseconds(5));
    EXPECT_EQ(expired, 0);
}

TEST_P(ApplicationContract, EndingAGrantTwiceOrOneThatNeverWasIsIgnored) {
    const Application::BackgroundTask task = application().beginBackgroundTask("sync", [] {});

    application().endBackgroundTask(0);
    application().endBackgroundTask(task);
    application().endBackgroundTask(task);
    application().endBackgroundTask(task + 1000);

    EXPECT_NE(application().beginBackgroundTask("again", [] {}), 0U);
}

TEST_P(ApplicationContract, AnEndedGrantLetsGoOfItsHandler) {
    const auto owned = std::make_shared<int>(1);
    const Application::BackgroundTask task = application().beginBackgroundTask("sync", [owned] {});

    application().endBackgroundTask(task);
    rig->pass(std::chrono::milliseconds(5));

    EXPECT_EQ(owned.use_count(), 1);
}

TEST_P(ApplicationContract, TheInformationDictionaryIsTheApplications) {
    EXPECT_EQ(application().informationDictionary(), information());
}

TEST_P(ApplicationContract, EachLineOfOutputIsWrittenAsGiven) {
    application().standardOutput("first");
    application().standardOutput("");
    application().standardOutput(
        "Gr\xC3\xBC\xC3\x9F"
        "e 100 %s");

    EXPECT_EQ(rig->output(), (std::vector<std::string>{"first", "",
                                                       "Gr\xC3\xBC\xC3\x9F"
                                                       "e 100 %s"}));
}

TEST_P(ApplicationContract, LinesOfThreadsThatWriteAtOnceStayWhole) {
    std::vector<std::thread> threads;
    std::vector<std::string> expected;
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        expected.insert(expected.end(), 50, std::string(200, letter));
        threads.emplace_back([&, letter] {
            for (int i = 0; i < 50; ++i) {
                application().standardOutput(std::string(200, letter));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::vector<std::string> lines = rig->output();
    std::sort(lines.begin(), lines.end());

    EXPECT_EQ(lines, expected);
}

TEST_P(ApplicationContract, AHandlerOfMemoryWarningsIsNotCalledByItself) {
    int warnings = 0;
    application().onMemoryWarning([&] { ++warnings; });

    rig->pass(std::chrono::milliseconds(5));

    EXPECT_EQ(warnings, 0);
}

} // namespace quorvane::platform::contract
