// What the update site answers.
#include "Fuzzing.h"
#include "Update/RemoteVersion.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const RemoteVersionResult result = decodeRemoteVersion(fuzz::textOf(data, size));
    if (const auto* error = std::get_if<UpdateError>(&result)) {
        fuzz::require(!error->text.empty(), "an error has a text");
        return 0;
    }
    const auto& remote = std::get<RemoteVersion>(result);
    fuzz::require(decodeRemoteVersion(encodeRemoteVersion(remote)) == result, "what is kept is read as the same");
    return 0;
}
