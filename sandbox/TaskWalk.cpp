#include "sandbox/TaskWalk.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "Tasks/TaskQuestions.h"
#include "sandbox/Chance.h"

namespace quorvane::sandbox {
namespace {

bool isPicked(const QVAnswer& answer, const std::vector<std::string>& picked) {
    return answer.key && std::ranges::find(picked, *answer.key) != picked.end();
}

std::optional<double> numberOf(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool isNumeric(QVQuestionType type) {
    return type == QVQuestionType::numericOpenEnded || type == QVQuestionType::ratingScale ||
           type == QVQuestionType::ratingScaleWithText;
}

std::int64_t intervalScore(const QVQuestion& question, double number) {
    const auto holds = [number](const std::shared_ptr<QVScoreInterval>& interval) {
        return interval && (!interval->lowerBound || number >= static_cast<double>(*interval->lowerBound)) &&
               (!interval->upperBound || number <= static_cast<double>(*interval->upperBound));
    };
    const auto found = std::ranges::find_if(question.scoreIntervals, holds);
    return found == question.scoreIntervals.end() ? 0 : (*found)->score;
}

/// The same for the same text everywhere.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3;
    }
    return hash;
}

} // namespace

std::string nextQuestion(const QVTask& task, const QVQuestion& question, const std::vector<std::string>& picked,
                         const std::set<std::string>& answered) {
    const auto isOpen = [&](const std::shared_ptr<QVQuestion>& candidate) {
        return candidate && candidate->key && !candidate->key->empty() && !answered.contains(*candidate->key);
    };
    for (const auto& answer : question.answers) {
        if (answer && isPicked(*answer, picked)) {
            if (const auto next = questionOf(task, answer->nextQuestionKey); isOpen(next)) {
                return answer->nextQuestionKey;
            }
        }
    }
    for (const auto& candidate : task.questions) {
        if (isOpen(candidate) && question.key && candidate->parentKey == question.key) {
            return *candidate->key;
        }
    }
    auto behind = std::ranges::find_if(
        task.questions, [&](const auto& candidate) { return candidate && candidate->key == question.key; });
    behind = std::find_if(behind, task.questions.end(), isOpen);
    return behind == task.questions.end() ? "" : *(*behind)->key;
}

std::int64_t scoreOf(const QVQuestion& question, const QVTaskResponse& response) {
    std::int64_t score = 0;
    for (const auto& answer : question.answers) {
        if (answer && response.answers && isPicked(*answer, *response.answers)) {
            score += answer->score.value_or(0);
        }
    }
    if (isNumeric(question.type)) {
        if (const auto number = numberOf(response.userAnswer.value_or(""))) {
            score += intervalScore(question, *number);
        }
    }
    return question.maxScore ? std::min(score, *question.maxScore) : score;
}

void decideRewards(QVTask& task, const std::string& user) {
    for (const auto& reward : task.rewards) {
        if (!reward) {
            continue;
        }
        const bool isDrawn = reward->isRandomDraw.value_or(false);
        Chance chance(hashOf(reward->key.value_or("") + "\n" + user));
        reward->state = !isDrawn || chance.fraction() < reward->randomDrawRatio.value_or(1) ? "earned" : "lost";
    }
}

} // namespace quorvane::sandbox
