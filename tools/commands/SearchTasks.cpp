#include "tools/commands/SearchTasks.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "Facade/Quorvane.h"
#include "tools/Arguments.h"
#include "tools/Results.h"
#include "tools/Session.h"
#include "tools/Terminal.h"
#include "tools/Text.h"

namespace quorvane::tool {
namespace {

struct TaskQuestion {
    std::optional<platform::Coordinate> near;
    int radius = 1000;
    std::optional<int> exclude;
    std::optional<std::string> campaign;
    std::optional<std::string> place;
};

struct TaskAnswer {
    std::optional<QVStatus> status;
    std::optional<platform::Location> center;
    QVTaskList tasks;

    void take(QVStatus result, const std::optional<platform::Location>& location,
              const std::optional<QVTaskList>& found) {
        status = result;
        center = location;
        tasks = found.value_or(QVTaskList());
    }
};

void ask(const TaskQuestion& question, Session& session, TaskAnswer& answer) {
    const auto around = [&answer](QVStatus status, const std::optional<platform::Location>& location,
                                  const std::optional<QVTaskList>& tasks) { answer.take(status, location, tasks); };
    if (question.campaign) {
        Quorvane::Search::tasks(CampaignId{*question.campaign}, around);
    } else if (question.place) {
        Quorvane::Search::tasks(PlaceId{*question.place}, around);
    } else if (question.near) {
        const platform::Location near{*question.near, 0, -1, session.platform().clock().now()};
        Quorvane::Search::tasks(near, question.radius, question.exclude, around);
    } else {
        Quorvane::Search::tasks(question.radius, question.exclude, around);
    }
}

/// Where the tasks are, in words: " of campaign c1".
std::string whereText(const TaskQuestion& question, const TaskAnswer& answer) {
    if (question.campaign) {
        return " of campaign " + printable(*question.campaign);
    }
    if (question.place) {
        return " of place " + printable(*question.place);
    }
    std::string text = " within " + metresText(question.radius);
    if (question.exclude) {
        text += " but not within " + metresText(*question.exclude);
    }
    return answer.center ? text + " of " + coordinateText(answer.center->coordinate) : text;
}

AnyCodable::Dictionary searchTasks(const TaskQuestion& question, const GlobalOptions& options, Terminal& terminal) {
    Session session(options, terminal);
    session.signIn();
    TaskAnswer answer;
    terminal.progress("searching …");
    ask(question, session, answer);
    session.waitForAnswer([&answer] { return answer.status.has_value(); });
    terminal.progress({});
    session.requireFound(*answer.status, question.near);

    terminal.line(counted(answer.tasks.size(), "task") + whereText(question, answer));
    printTasks(answer.tasks, terminal);
    AnyCodable::Dictionary document{{"tasks", documentOf(answer.tasks)}};
    if (answer.center) {
        document["near"] = documentOf(answer.center->coordinate);
        document["radius"] = question.radius;
    }
    return document;
}

void addOptions(CLI::App& verb, const std::shared_ptr<TaskQuestion>& question) {
    CLI::Option* const near =
        verb.add_option_function<std::string>(
                "--near", [question](const std::string& text) { question->near = coordinateIn("--near", text); },
                "The point, in degrees (where the device is)")
            ->type_name("LAT,LNG");
    CLI::Option* const radius =
        verb.add_option_function<std::string>(
                "--radius", [question](const std::string& text) { question->radius = metresIn("--radius", text); },
                "How far around it (1000)")
            ->type_name("METRES");
    CLI::Option* const exclude =
        verb.add_option_function<std::string>(
                "--exclude", [question](const std::string& text) { question->exclude = metresIn("--exclude", text); },
                "Leave out what is as near as this")
            ->type_name("METRES");
    CLI::Option* const campaign =
        verb.add_option_function<std::string>(
                "--campaign", [question](const std::string& text) { question->campaign = textIn("--campaign", text); },
                "The tasks of a campaign, wherever they are")
            ->type_name("ID");
    CLI::Option* const place =
        verb.add_option_function<std::string>(
                "--place", [question](const std::string& text) { question->place = textIn("--place", text); },
                "The tasks of a place")
            ->type_name("ID");
    for (CLI::Option* const around : {near, radius, exclude}) {
        around->excludes(campaign)->excludes(place);
    }
    campaign->excludes(place);
}

} // namespace

void addSearchTasks(CLI::App& search, Command& chosen) {
    const auto question = std::make_shared<TaskQuestion>();
    CLI::App* const verb = search.add_subcommand("tasks", "Tasks around a point, of a campaign or of a place");
    verb->fallthrough();
    addOptions(*verb, question);
    verb->callback([question, &chosen] {
        chosen = [question = *question](const GlobalOptions& options, Terminal& terminal) {
            return searchTasks(question, options, terminal);
        };
    });
}

} // namespace quorvane::tool
