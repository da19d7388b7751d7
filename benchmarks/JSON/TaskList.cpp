#include "benchmarks/JSON/TaskList.h"

#include <array>
#include <map>
#include <random>
#include <string_view>

#include "JSON/ModelCoding.h"
#include "Models/PlatformValues.h"

QV_JSON_MODEL(quorvane::TaskList);

namespace quorvane {

namespace {

constexpr std::int64_t someDay = 1760000000000;

class Maker {
public:
    std::shared_ptr<QVTask> task(int number) {
        auto task = std::make_shared<QVTask>();
        task->associatesOnly = number % 5 == 0;
        task->created = moment();
        task->modified = moment();
        task->due = moment();
        task->description = sentence(14);
        task->distance = decimal(0, 25);
        task->key = key();
        task->location = address();
        task->locationKey = key();
        task->logo = "https://images.example/logos/" + key() + ".png";
        task->owners = owners();
        for (int i = 0; i < 8; ++i) {
            task->questions.push_back(question(i));
        }
        task->nextQuestion = task->questions.front()->key;
        task->rewards.push_back(reward());
        task->state = QVTaskState::generated;
        task->taskRequirements = {sentence(8), sentence(6)};
        task->time = std::make_shared<QVEstimatedTime>();
        task->time->min = whole(1, 5);
        task->time->max = whole(6, 20);
        task->title = sentence(4);
        task->version = 1;
        return task;
    }

private:
    std::int64_t whole(std::int64_t low, std::int64_t high) {
        return low + static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(high - low + 1));
    }
    std::int64_t moment() { return someDay + whole(0, 999999999); }
    double decimal(int low, int high) { return static_cast<double>(whole(low * 100000, high * 100000)) / 100000; }

    std::string key() {
        constexpr std::string_view digits = "0123456789abcdef";
        std::string text;
        for (int i = 0; i < 24; ++i) {
            text += digits[random() % digits.size()];
        }
        return text;
    }

    std::string sentence(int words) {
        static constexpr std::array<std::string_view, 16> vocabulary{
            "is",    "the",  "product", "on",       "display",     "shelf",       "near",  "entrance",
            "price", "sign", "visible", "customer", "caf\xC3\xA9", "\"special\"", "offer", "please"};
        std::string text;
        for (int i = 0; i < words; ++i) {
            text += text.empty() ? "" : " ";
            text += vocabulary[random() % vocabulary.size()];
        }
        return text;
    }

    std::shared_ptr<QVOwners> owners() {
        auto owners = std::make_shared<QVOwners>();
        owners->campaign = key();
        owners->client = key();
        return owners;
    }

    std::shared_ptr<QVAddress> address() {
        auto address = std::make_shared<QVAddress>();
        address->address1 = std::to_string(whole(1, 999)) + " Long Market Street";
        address->city = "Springfield";
        address->state = "CA";
        address->postalCode = std::to_string(whole(10000, 99999));
        address->country = "US";
        address->coordinate = platform::Coordinate{decimal(-90, 90), decimal(-180, 180)};
        address->phoneNumber = "+1 555 0100";
        return address;
    }

    std::shared_ptr<QVQuestion> question(int number) {
        using Type = QVQuestion::QuestionType;
        constexpr std::array<Type, 4> types{Type::singleAnswer, Type::openEnded, Type::multipleAnswers,
                                            Type::ratingScale};
        auto question = std::make_shared<QVQuestion>();
        question->type = types[static_cast<std::size_t>(number) % types.size()];
        question->answerOrder = "asListed";
        question->created = moment();
        question->modified = moment();
        question->key = key();
        question->order = number;
        question->owners = owners();
        question->parentKey = key();
        question->question = sentence(11);
        question->version = 1;
        question->isOptional = false;
        question->pointers = std::make_shared<QVKeyedListPointer>();
        question->pointers->nextKey = key();
        question->pointers->previousKey = key();
        question->responseCount = std::make_shared<QVTaskResponseCount>();
        question->responseCount->wanted = 1;
        const bool isChoice = number % 2 == 0;
        for (int i = 0; isChoice && i < 4; ++i) {
            question->answers.push_back(answer(i, *question->key));
        }
        if (number == 1) {
            question->openTextPlaceholder = sentence(3);
            question->minValue = 3;
            question->maxValue = 200;
        }
        return question;
    }

    std::shared_ptr<QVAnswer> answer(int number, const std::string& questionKey) {
        auto answer = std::make_shared<QVAnswer>();
        answer->answerOrder = number;
        answer->clientReference = std::to_string(whole(1000, 9999));
        answer->created = moment();
        answer->displayText = sentence(3);
        answer->displayTextKey = key();
        answer->key = key();
        answer->nextQuestionKey = key();
        answer->questionKey = questionKey;
        answer->version = 1;
        return answer;
    }

    std::shared_ptr<QVReward> reward() {
        auto reward = std::make_shared<QVReward>();
        reward->key = key();
        reward->clientName = "A client with a name";
        reward->message = std::make_shared<QVRewardMessage>();
        reward->message->header = sentence(3);
        reward->message->body = sentence(12);
        reward->isRandomDraw = true;
        reward->randomDrawRatio = 0.25;
        reward->legalese = sentence(20);
        reward->created = moment();
        reward->owners = owners();
        return reward;
    }

    std::mt19937_64 random{42};
};

} // namespace

const std::string& taskListText(int count) {
    static std::map<int, std::string> texts;
    std::string& text = texts[count];
    if (text.empty()) {
        Maker maker;
        TaskList list;
        list.count = count;
        for (int i = 0; i < count; ++i) {
            list.data.push_back(maker.task(i));
        }
        text = json::encode(list);
    }
    return text;
}

} // namespace quorvane
