#include "Core/QVSettings.h"

#include "Core/PreferenceKeys.h"
#include "Core/QVLogger.h"
#include "Core/StoredLogLevel.h"
#include "Core/StoredTrackingOptions.h"
#include "JSON/JSON.h"
#include "Models/QVConfig.h"
#include "Models/QuorvaneTrackingOptions.h"
#include "Platform/Platform.h"
#include "Platform/PreferencesStore.h"
#include "Platform/SecureRandom.h"

namespace quorvane {
namespace {

platform::PreferencesStore& preferences() {
    return platform::current().preferences();
}

template <class Model>
std::optional<Model> readModel(std::string_view key) {
    const std::optional<std::string> text = preferences().string(key);
    if (!text) {
        return std::nullopt;
    }
    try {
        return json::decode<Model>(*text);
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

template <class Model>
void storeModel(std::string_view key, const Model& model, const char* failure) {
    try {
        preferences().setString(key, json::encode(model));
    } catch (const json::EncodingError& error) {
        QVLogger::shared().log(QVLogLevel::ERROR, std::string(failure) + error.what());
    }
}

} // namespace

QVLogLevel QVSettings::getLogLevel() {
    return storedLogLevel();
}

std::shared_ptr<QuorvaneTrackingOptions> QVSettings::getTrackingOptions() {
    if (const auto options = StoredTrackingOptions::shared().stored()) {
        return std::make_shared<QuorvaneTrackingOptions>(*options);
    }
    return QuorvaneTrackingOptions::EFFICIENT();
}

void QVSettings::setTrackingOptions(const QuorvaneTrackingOptions& options) {
    storeModel(preference::trackingOptions, options, "unexpected error setting tracking options: ");
}

std::optional<QVConfig> QVSettings::getConfig() {
    return readModel<QVConfig>(preference::config);
}

void QVSettings::setConfig(const QVConfig& config) {
    storeModel(preference::config, config, "unexpected error setting config: ");
}

std::optional<std::string> QVSettings::getInstallId() {
    if (std::optional<std::string> stored = preferences().string(preference::installId)) {
        return stored;
    }
    std::string made = platform::current().random().uuid();
    preferences().setString(preference::installId, made);
    return made;
}

void QVSettings::setUserId(const std::optional<std::string>& userId) {
    // Another id may only be stored once the old one is gone, and removing an id asks for just that again.
    for (auto stored = preferences().string(preference::userId); stored && stored != userId;
         stored = preferences().string(preference::userId)) {
    }
    preferences().setOptionalString(preference::userId, userId);
}

} // namespace quorvane
