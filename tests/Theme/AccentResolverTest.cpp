#include "Theme/AccentResolver.h"

#include "Vectors.h"
#include "sim/FakeDefaults.h"

namespace morvel {

using vectors::Json;

namespace {

Json bytes(const ui::RGBA& color) {
    Json bytes = Json::array();
    for (const double component : {color.red, color.green, color.blue, color.alpha}) bytes.push_back(component * 255);
    return bytes;
}

}  // namespace

TEST(AccentResolver, RecordedColours) {
    vectors::walk("accent", [](const Json& input) -> Json {
        if (input["fn"] == "parse") {
            const auto parsed = AccentResolver::parse(input["text"].get<std::string>());
            return parsed ? bytes(*parsed) : Json();
        }
        EXPECT_EQ(input["fn"], "resolved");
        sim::FakeDefaults defaults;
        SettingsStore settings(defaults);
        settings.accentColorMode.set(vectors::choice<AccentColorMode>(input["mode"]));
        settings.accentColorCustom.set(input["custom"]);
        const ui::Color color = AccentResolver::resolved(settings);
        if (color == ui::kControlAccentColor) return "system";
        EXPECT_EQ(color, ui::customColor(color.rgba)) << "the colour's own alpha is all there is";
        return bytes(color.rgba);
    });
}

}  // namespace morvel
