// A release as the update site announces it, and the JSON document that it comes in and is kept in.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "Platform/UserDefaults.h"
#include "Update/SemanticVersion.h"

namespace morvel {

struct RemoteVersion {
    SemanticVersion version;
    std::string build;  ///< shown only
    Date publishedAt;   ///< whole seconds
    std::string downloadURL;
    std::string releaseNotesURL;
    std::string minimumOSVersion;  ///< dotted numbers, such as "13.0"

    bool operator==(const RemoteVersion&) const = default;
};

/// Why there is no document. The text is for people.
struct UpdateError {
    enum class Kind { Transport, Status, Decoding, InvalidVersion };
    Kind kind = Kind::Transport;
    std::string text;
    int status = 0;  ///< of the answer; meaningful for Status alone

    bool operator==(const UpdateError&) const = default;
};

using RemoteVersionResult = std::variant<RemoteVersion, UpdateError>;

/// All six members must be there, as strings; the date is one of ISO 8601 with seconds and a time zone.
RemoteVersionResult decodeRemoteVersion(std::string_view document);
/// What `decodeRemoteVersion` reads as the same record.
std::string encodeRemoteVersion(const RemoteVersion& remote);

}  // namespace morvel
