#include <QProcess>
#include <filesystem>
#include <string>

#include "Platform/Qt/QtImages.h"
#include "tools/DrawnFile.h"
#include "tools/ProgramTest.h"

namespace quorvane::tool {
namespace {

class PhotoTest : public ProgramTest {
protected:
    /// A file with a question whose photo options have these members.
    [[nodiscard]] std::string question(const std::string& members = "") const {
        return makeFile("question.json", R"({"key": "q1", "photoCaptureOptions": {)" + members + "}}");
    }
    [[nodiscard]] std::string camera() const { return drawnFile((scratch / "seen.jpg").string(), 320, 200); }
    [[nodiscard]] std::string output(const std::string& name = "photo.jpg") const { return (scratch / name).string(); }

    Ended photo(const std::string& file, const Arguments& more = {}) {
        Arguments arguments{"photo", "--question", file, "--camera", camera(), "--output", output()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
    void expectPhoto(const std::string& path) {
        const auto read = platform::QtImages::read(path);
        ASSERT_TRUE(std::holds_alternative<std::shared_ptr<platform::Image>>(read));
        EXPECT_EQ(std::get<0>(read)->width(), 320);
        EXPECT_EQ(std::get<0>(read)->height(), 200);
    }
    void expectFailure(const Ended& ended, const std::string& sentence) {
        EXPECT_EQ(ended.exitStatus, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_NE(ended.errors.find(sentence), std::string::npos) << ended.errors;
        EXPECT_FALSE(std::filesystem::exists(output()));
    }
};

TEST_F(PhotoTest, ThePictureInThePlaceOfTheCameraIsPhotographed) {
    const Ended ended = photo(question(R"("photoOverlayType": "circle")"));

    EXPECT_EQ(ended.exitStatus, 0);
    EXPECT_EQ(ended.output, output() + ": 320 x 200 pixels\n");
    EXPECT_EQ(ended.errors, "");
    expectPhoto(output());
}

TEST_F(PhotoTest, ANameThatEndsInPNGIsAPNGFile) {
    const Ended ended = run({"photo", "--question", question(), "--camera", camera(), "--output", output("photo.png")});

    EXPECT_EQ(ended.exitStatus, 0);
    std::ifstream file(output("photo.png"), std::ios::binary);
    std::string signature(4, '\0');
    file.read(signature.data(), 4);
    EXPECT_EQ(signature, "\x89PNG");
    expectPhoto(output("photo.png"));
}

TEST_F(PhotoTest, TheEndingOfThePhotosNameCountsInCapitalsToo) {
    const Ended ended = run({"photo", "--question", question(), "--camera", camera(), "--output", output("photo.PNG")});

    EXPECT_EQ(ended.exitStatus, 0);
    std::ifstream file(output("photo.PNG"), std::ios::binary);
    std::string signature(4, '\0');
    file.read(signature.data(), 4);
    EXPECT_EQ(signature, "\x89PNG");
}

TEST_F(PhotoTest, TheDecoderOfAVideoSaysNothing) {
    const std::string video = (scratch / "seen.mp4").string();
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-loglevel", "error", "-f", "lavfi", "-i", "color=red:size=320x200:rate=25",
                                           "-t", "0.2", QString::fromStdString(video)}),
              0);

    const Ended ended = run({"photo", "--question", question(), "--camera", video, "--output", output()});

    EXPECT_EQ(ended.errors, "");
    EXPECT_EQ(ended.exitStatus, 0);
    expectPhoto(output());
}

TEST_F(PhotoTest, TheDocumentTellsTheFileAndItsSize) {
    const AnyCodable::Dictionary document = photo(question(), {"--json"}).document();

    EXPECT_EQ(textIn(document, "photo"), output());
    EXPECT_EQ(numberIn(document, "width"), 320);
    EXPECT_EQ(numberIn(document, "height"), 200);
}

TEST_F(PhotoTest, ALevelThatIsAskedForIsWaitedFor) {
    const Ended upright = photo(question(R"("photoLevelType": "vertical")"), {"--level", "0.05,-1.02"});
    EXPECT_EQ(upright.exitStatus, 0) << upright.errors;
    std::filesystem::remove(output());

    const Ended flat = photo(question(R"("photoLevelType": "flat")"), {"--level", "0,0"});
    EXPECT_EQ(flat.exitStatus, 0) << flat.errors;
}

TEST_F(PhotoTest, ADeviceThatIsNotHeldLevelTakesNoPhoto) {
    expectFailure(photo(question(R"("photoLevelType": "flat")"), {"--level", "0,-1"}), "the shutter stays disabled");
}

TEST_F(PhotoTest, AWrongLevelIsAWrongCommandLine) {
    for (const char* level : {"1", "x,y", "0,", "0,-1,2", "nan,0", "17,0"}) {
        const Ended ended = photo(question(), {"--level", level});
        EXPECT_EQ(ended.exitStatus, 2) << level;
        EXPECT_NE(ended.errors.find("--level takes X,Y"), std::string::npos) << ended.errors;
    }
}

TEST_F(PhotoTest, AQuestionThatAsksForNoPhotoHasNone) {
    expectFailure(photo(makeFile("none.json", R"({"key": "q1"})")), "the question asks for no photo");
}

TEST_F(PhotoTest, OfATasksQuestionsTheOneThatAsksForAPhotoIsTaken) {
    const std::string task =
        makeFile("task.json", R"({"key": "t", "questions": [{"key": "q1"}, {"photoCaptureOptions": {}}]})");
    EXPECT_EQ(photo(task).exitStatus, 0);
    std::filesystem::remove(output());

    expectFailure(photo(task, {"--number", "1"}), "the question asks for no photo");
    expectFailure(photo(task, {"--number", "3"}), "holds no question number 3");
}

TEST_F(PhotoTest, AmongSeveralThatAskForAPhotoOneIsNamed) {
    const std::string several =
        makeFile("several.json", R"([{"photoCaptureOptions": {}}, {"photoCaptureOptions": {}}])");
    expectFailure(photo(several), "choose one with --number");

    EXPECT_EQ(photo(several, {"--number", "2"}).exitStatus, 0);
    std::filesystem::remove(output());
    expectFailure(run({"photo", "--question", makeFile("none.json", R"([{"key": "a"}, {"key": "b"}])")}),
                  "holds no question that asks for a photo");
}

TEST_F(PhotoTest, FilesThatCannotBeReadAreNamed) {
    expectFailure(photo((scratch / "missing.json").string()), "missing.json");
    expectFailure(photo(makeFile("broken.json", "{")), "broken.json");
    expectFailure(photo(makeFile("wrong.json", R"({"photoCaptureOptions": {"photoLevelType": "upside"}})")),
                  "photoLevelType");
    expectFailure(
        run({"photo", "--question", question(), "--camera", (scratch / "missing.jpg").string(), "--output", output()}),
        "missing.jpg");
}

TEST_F(PhotoTest, AFileThatCannotBeWrittenIsNamed) {
    const std::string nowhere = (scratch / "no" / "such" / "photo.jpg").string();

    const Ended ended = run({"photo", "--question", question(), "--camera", camera(), "--output", nowhere});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_NE(ended.errors.find(nowhere), std::string::npos) << ended.errors;
}

TEST_F(PhotoTest, AVideoThatIsNoneIsACameraThatCannotBeUsed) {
    const std::string noVideo = makeFile("no.mp4", "this is no video");

    const Ended ended = run({"photo", "--question", question(), "--camera", noVideo, "--output", output()});

    EXPECT_EQ(ended.exitStatus, 1);
    EXPECT_NE(ended.errors, "");
}

TEST_F(PhotoTest, WithoutAQuestionTheCommandLineIsWrong) {
    EXPECT_EQ(run({"photo"}).exitStatus, 2);
}

} // namespace
} // namespace quorvane::tool
