#include "Platform/Linux/UI/Drag/UriList.h"

#include <algorithm>
#include <optional>

#include "Platform/Linux/System/HostName.h"

namespace morvel::x11 {

namespace {

// Nobody drags more on purpose, and each is looked at on the main thread.
constexpr size_t kMaxFiles = 4096;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::optional<int> hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (lower(c) >= 'a' && lower(c) <= 'f') return lower(c) - 'a' + 10;
    return std::nullopt;
}

/// No value: a percent sign without two digits.
std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        if (text.size() - i < 3) return std::nullopt;
        const auto high = hexDigit(text[i + 1]), low = hexDigit(text[i + 2]);
        if (!high || !low) return std::nullopt;
        decoded += static_cast<char>(*high * 16 + *low);
        i += 2;
    }
    return decoded;
}

bool isThisMachine(std::string_view host) {
    return host.empty() || equalIgnoringCase(host, "localhost") || equalIgnoringCase(host, hostName());
}

std::optional<std::string> localPath(std::string_view uri) {
    constexpr std::string_view kScheme = "file:";
    if (!equalIgnoringCase(uri.substr(0, kScheme.size()), kScheme)) return std::nullopt;
    uri.remove_prefix(kScheme.size());
    uri = uri.substr(0, uri.find_first_of("?#"));
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        const size_t slash = uri.find('/');
        if (slash == uri.npos || !isThisMachine(uri.substr(0, slash))) return std::nullopt;
        uri.remove_prefix(slash);
    }
    auto path = percentDecoded(uri);
    if (!path || !path->starts_with('/') || path->find('\0') != path->npos) return std::nullopt;
    return path;
}

}  // namespace

std::vector<std::string> localPathsIn(std::string_view uriList) {
    std::vector<std::string> paths;
    while (!uriList.empty() && paths.size() < kMaxFiles) {
        const size_t end = std::min(uriList.find_first_of("\r\n"), uriList.size());
        if (auto path = localPath(uriList.substr(0, end))) paths.push_back(std::move(*path));
        uriList.remove_prefix(std::min(end + 1, uriList.size()));
    }
    return paths;
}

}  // namespace morvel::x11
