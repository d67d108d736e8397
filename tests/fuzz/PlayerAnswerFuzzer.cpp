// What a player's script answers: state, title and artist.
#include "Fuzzing.h"
#include "NowPlaying/PlayerScripts.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const std::string answer(fuzz::textOf(data, size));
    const auto result = parsePlayerAnswer(kMusic.bundleID, answer);
    if (!result) return 0;
    const std::string end = "||" + result->title + "||" + result->artist;
    fuzz::require(answer.ends_with(end), "title and artist are the answer's");
    fuzz::require(result->isPlaying == (answer == "playing" + end), "it plays when it says so, and only then");
    fuzz::require(choosePlayer(std::nullopt, result) == result, "the only player is chosen");
    return 0;
}
