#include "Update/RemoteVersion.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Update/ISODate.h"

namespace morvel {

namespace {

constexpr const char* kVersion = "version";
constexpr const char* kBuild = "build";
constexpr const char* kPublishedAt = "published_at";
constexpr const char* kDownloadURL = "download_url";
constexpr const char* kReleaseNotesURL = "release_notes_url";
constexpr const char* kMinimumOSVersion = "minimum_os_version";

UpdateError malformed(std::string text) {
    return {UpdateError::Kind::Decoding, std::move(text)};
}

UpdateError malformedMember(const char* name) {
    return malformed(std::string("The update document's \"") + name + "\" is missing or malformed.");
}

/// The member's text; null when there is none.
const std::string* textAt(const nlohmann::json& document, const char* name) {
    const auto member = document.find(name);
    return member == document.end() ? nullptr : member->get_ptr<const std::string*>();
}

/// An address has some characters, none of which ends it where it is written down.
bool isAddress(const std::string& text) {
    return !text.empty() && std::ranges::none_of(text, [](unsigned char c) { return c <= ' ' || c == 0x7F; });
}

}  // namespace

RemoteVersionResult decodeRemoteVersion(std::string_view document) {
    const auto json = nlohmann::json::parse(document, nullptr, /*allow_exceptions=*/false);
    if (!json.is_object()) return malformed("The update document is no JSON object.");
    RemoteVersion remote;
    const std::string* const version = textAt(json, kVersion);
    if (!version) return malformedMember(kVersion);
    const auto parsed = SemanticVersion::parse(*version);
    if (!parsed) return UpdateError{UpdateError::Kind::InvalidVersion, "Invalid semver: '" + *version + "'"};
    remote.version = *parsed;
    for (const auto& [name, field] :
         {std::pair(kBuild, &RemoteVersion::build), std::pair(kDownloadURL, &RemoteVersion::downloadURL),
          std::pair(kReleaseNotesURL, &RemoteVersion::releaseNotesURL),
          std::pair(kMinimumOSVersion, &RemoteVersion::minimumOSVersion)}) {
        const std::string* const text = textAt(json, name);
        if (!text) return malformedMember(name);
        remote.*field = *text;
    }
    const std::string* const published = textAt(json, kPublishedAt);
    const auto date = published ? parseISODate(*published) : std::nullopt;
    if (!date) return malformedMember(kPublishedAt);
    remote.publishedAt = *date;
    if (!isAddress(remote.downloadURL)) return malformedMember(kDownloadURL);
    if (!isAddress(remote.releaseNotesURL)) return malformedMember(kReleaseNotesURL);
    return remote;
}

std::string encodeRemoteVersion(const RemoteVersion& remote) {
    const nlohmann::ordered_json document = {
        {kVersion, remote.version.description()},          {kBuild, remote.build},
        {kPublishedAt, formatISODate(remote.publishedAt)}, {kDownloadURL, remote.downloadURL},
        {kReleaseNotesURL, remote.releaseNotesURL},        {kMinimumOSVersion, remote.minimumOSVersion}};
    return document.dump();
}

}  // namespace morvel
