#include "sandbox/IdentityService.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <utility>

#include "JSON/JSON.h"
#include "sandbox/Secrets.h"

namespace quorvane::sandbox {
namespace {

constexpr std::size_t longestText = 1024;
constexpr std::size_t shortestVerifier = 43;
/// 128 random bytes in base64 are longer than the 128 characters that the standard has in mind.
constexpr std::size_t longestVerifier = 171;
constexpr std::size_t challengeSize = 43;

[[noreturn]] void refuse(const std::string& description) {
    throw Refusal(400, "invalid_request", description);
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isUnreserved(char c) {
    return isLetterOrDigit(c) || std::string_view("-._~").find(c) != std::string_view::npos;
}

bool isBase64URL(char c) {
    return isLetterOrDigit(c) || c == '-' || c == '_';
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

bool isAbsoluteURI(std::string_view text) {
    const auto colon = text.find(':');
    const auto scheme = text.substr(0, colon);
    const auto isVisible = [](char c) { return c > 0x20 && c < 0x7f && c != '#'; };
    return colon != std::string_view::npos && colon + 1 < text.size() && !scheme.empty() && !(scheme[0] <= '9') &&
           std::all_of(scheme.begin(), scheme.end(),
                       [](char c) { return isLetterOrDigit(c) || c == '+' || c == '-' || c == '.'; }) &&
           std::all_of(text.begin(), text.end(), isVisible);
}

/// The text under @p name, where @p source finds it; refuses what is absent, empty, too long or no text.
template <class Source>
std::string required(const Source& source, std::string_view name) {
    const std::string quoted = "\"" + std::string(name) + "\"";
    const std::optional<std::string> text = source(name);
    if (!text) {
        refuse(quoted + " is missing.");
    }
    if (text->empty() || text->size() > longestText || std::any_of(text->begin(), text->end(), isControl)) {
        refuse(quoted + " must have from 1 to " + std::to_string(longestText) + " bytes and no control characters.");
    }
    return *text;
}

std::string redirectURI(const auto& source) {
    std::string redirect = required(source, "redirect_uri");
    if (!isAbsoluteURI(redirect)) {
        refuse("\"redirect_uri\" must be an absolute URI without a fragment.");
    }
    return redirect;
}

void checkVerifier(const std::string& verifier) {
    if (verifier.size() < shortestVerifier || verifier.size() > longestVerifier ||
        !std::all_of(verifier.begin(), verifier.end(), isUnreserved)) {
        refuse("\"code_verifier\" must have from 43 to 171 letters, digits and characters of \"-._~\".");
    }
}

void refuseExpired(const Request& request) {
    if (request.expireCredential) {
        throw Refusal(401, "invalid_token", "The credential has expired.");
    }
}

} // namespace

IdentityService::IdentityService(TokenStore& theTokens, TokenStore::Now theNow)
    : tokens(theTokens), now(std::move(theNow)), key(randomBytes(32)) {}

Answer IdentityService::authorize(const Request& request) {
    refuseExpired(request);
    const auto source = [&](std::string_view name) { return request.query.value(name); };
    const Grant grant{.client = required(source, "client_id"), .user = required(source, "user_id")};
    if (required(source, "response_type") != "code") {
        throw Refusal(400, "unsupported_response_type", "\"response_type\" must be \"code\".");
    }
    if (required(source, "scope") != "openid") {
        throw Refusal(400, "invalid_scope", "\"scope\" must be \"openid\".");
    }
    if (required(source, "code_challenge_method") != "S256") {
        refuse("\"code_challenge_method\" must be \"S256\".");
    }
    const std::string challenge = required(source, "code_challenge");
    if (challenge.size() != challengeSize || !std::all_of(challenge.begin(), challenge.end(), isBase64URL)) {
        refuse("\"code_challenge\" must be a SHA-256 digest as 43 characters of base64url.");
    }
    const std::string redirect = redirectURI(source);
    std::string state = required(source, "state");
    return answerWith(
        {{"code", AnyCodable(tokens.issueCode(grant, redirect, challenge))}, {"state", AnyCodable(std::move(state))}});
}

Answer IdentityService::token(const Request& request) {
    refuseExpired(request);
    const json::Dictionary fields = *bodyOf(request).dictionary();
    const auto source = [&](std::string_view name) -> std::optional<std::string> {
        const auto value = fields.value(name);
        if (!value) {
            return std::nullopt;
        }
        if (const auto* text = std::get_if<std::string>(&value->value)) {
            return *text;
        }
        refuse("\"" + std::string(name) + "\" must be a text.");
    };
    const std::string type = required(source, "grant_type");
    const std::string client = required(source, "client_id");
    TokenPair pair;
    if (type == "authorization_code") {
        const std::string code = required(source, "code");
        const std::string verifier = required(source, "code_verifier");
        checkVerifier(verifier);
        pair = tokens.redeem(client, code, redirectURI(source), verifier);
    } else if (type == "refresh_token") {
        pair = tokens.refresh(client, required(source, "refresh_token"));
    } else {
        throw Refusal(400, "unsupported_grant_type",
                      R"("grant_type" must be "authorization_code" or "refresh_token".)");
    }
    return answerWith({{"access_token", AnyCodable(pair.access)},
                       {"expires_in", AnyCodable(std::to_string(tokens.times().accessToken.count()))},
                       {"id_token", AnyCodable(identityToken(pair.grant))},
                       {"refresh_token", AnyCodable(pair.refresh)},
                       {"session_state", AnyCodable(randomToken())},
                       {"token_type", AnyCodable("Bearer")}});
}

std::string IdentityService::identityToken(const Grant& grant) const {
    const std::int64_t issued = std::chrono::duration_cast<std::chrono::seconds>(now().time_since_epoch()).count();
    const AnyCodable::Dictionary header{{"alg", "HS256"}, {"typ", "JWT"}};
    const AnyCodable::Dictionary claims{{"iss", "quorvane-sandbox"},
                                        {"sub", AnyCodable(grant.user)},
                                        {"aud", AnyCodable(grant.client)},
                                        {"iat", issued},
                                        {"exp", issued + tokens.times().accessToken.count()}};
    const std::string text = base64URL(json::writeExactly(header)) + "." + base64URL(json::writeExactly(claims));
    return text + "." + base64URL(signature(key, text));
}

} // namespace quorvane::sandbox
