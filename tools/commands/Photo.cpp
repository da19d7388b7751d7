#include "tools/commands/Photo.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "testing/TrackText.h"
#include "tools/Arguments.h"
#include "tools/Failure.h"
#include "tools/InputFile.h"
#include "tools/OutputFile.h"
#include "tools/Terminal.h"
#include "tools/commands/PhotoRun.h"

namespace quorvane::tool {
namespace {

constexpr double photoQuality = 0.9;

std::vector<std::shared_ptr<QVQuestion>> questionsIn(const std::string& path) {
    std::vector<std::shared_ptr<QVQuestion>> questions;
    for (const std::string& text : objectsIn(path, "question", {})) {
        questions.push_back(modelIn<QVQuestion>(path, text));
    }
    return questions;
}

QVQuestion questionOf(const PhotoOptions& options) {
    std::vector<std::shared_ptr<QVQuestion>> questions = questionsIn(options.question);
    const std::string file = nameOfFile(options.question);
    if (options.number) {
        if (*options.number > questions.size()) {
            throw Failure(file + " holds no question number " + std::to_string(*options.number));
        }
        return *questions[*options.number - 1];
    }
    if (questions.size() > 1) {
        const auto asksForNone = [](const auto& question) { return question->photoCaptureOptions == nullptr; };
        questions.erase(std::remove_if(questions.begin(), questions.end(), asksForNone), questions.end());
    }
    if (questions.empty()) {
        throw Failure(file + " holds no question that asks for a photo");
    }
    if (questions.size() > 1) {
        throw Failure(file + " holds " + std::to_string(questions.size()) +
                      " questions that ask for a photo; choose one with --number");
    }
    return *questions.front();
}

void writeFile(const std::string& path, const std::string& content) {
    OutputFile file(path);
    file.write(content);
    file.finish();
}

AnyCodable::Dictionary photo(const PhotoOptions& options, const GlobalOptions& global, Terminal& terminal) {
    const auto picture = takePhoto(questionOf(options), options, global, terminal);
    // The ending of a name counts in capitals, too.
    const bool isPNG = testing::lowered(std::string_view(options.output)).ends_with(".png");
    const std::optional<std::string> file = isPNG ? picture->png() : picture->jpeg(photoQuality);
    if (!file) {
        throw Failure("the photo cannot be encoded");
    }
    writeFile(options.output, *file);
    const std::string size = std::to_string(picture->width()) + " x " + std::to_string(picture->height());
    terminal.line(nameOfFile(options.output) + ": " + size + " pixels");
    return {{"photo", options.output}, {"width", picture->width()}, {"height", picture->height()}};
}

} // namespace

void addPhoto(CLI::App& program, Command& chosen) {
    const auto options = std::make_shared<PhotoOptions>();
    CLI::App* const verb =
        program.add_subcommand("photo", "Open the camera screen for a question, and write the photo that is taken");
    verb->fallthrough();
    verb->add_option_function<std::string>(
            "--question", [options](const std::string& text) { options->question = textIn("--question", text); },
            "The question: a file with it, with several, or with a task")
        ->type_name("FILE")
        ->required();
    verb->add_option_function<std::string>(
            "--number", [options](const std::string& text) { options->number = ordinalIn("--number", text); },
            "Which of several questions (the only one that asks for a photo)")
        ->type_name("N");
    verb->add_option_function<std::string>(
            "--camera", [options](const std::string& text) { options->camera = textIn("--camera", text); },
            "A picture or a video in the place of the device's camera")
        ->type_name("FILE");
    verb->add_option_function<std::string>(
            "--level", [options](const std::string& text) { options->level = accelerationIn("--level", text); },
            "How the device is held, in the place of its accelerometer: gravity along the screen to the right and to "
            "the top; 0,-1 upright, 0,0 flat")
        ->type_name("X,Y");
    verb->add_option_function<std::string>(
            "--output", [options](const std::string& text) { options->output = textIn("--output", text); },
            "The file that is written, PNG where it ends in .png, else JPEG (photo.jpg)")
        ->type_name("FILE");
    verb->add_flag(
        "--window", options->hasWindow,
        "Show the screen in a window, and let the user take the photo (it is drawn where nobody sees it, and "
        "the photo is taken as soon as it can be)");
    verb->callback([options, &chosen] {
        chosen = [options = *options](const GlobalOptions& global, Terminal& terminal) {
            return photo(options, global, terminal);
        };
    });
}

} // namespace quorvane::tool
