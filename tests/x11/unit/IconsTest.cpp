#include <gtest/gtest.h>

#include "Platform/Linux/Icons/IconTheme.h"
#include "Platform/Linux/Icons/ImageLoading.h"
#include "Platform/Linux/Icons/RenderedIcons.h"
#include "Platform/Linux/Icons/Symbols.h"
#include "x11/TemporaryFolder.h"

namespace morvel::x11 {
namespace {

constexpr const char* kMineIndex = R"([Icon Theme]
Name=Mine
Inherits=Base, Mine
Directories=16/apps,48/apps,scalable/apps,missing

[16/apps]
Size=16
Type=Fixed
[48/apps]
Size=48
[scalable/apps]
Size=128
MinSize=56
MaxSize=512
Type=Scalable
)";

class IconThemeTest : public testing::Test {
protected:
    IconThemeTest() {
        folder.write("a/Mine/index.theme", kMineIndex);
        folder.write("b/Base/index.theme", "[Icon Theme]\nInherits=Mine\nDirectories=x\n[x]\nSize=48\n");
    }
    std::string find(const std::string& name, int size) {
        IconTheme theme({folder.at("a"), folder.at("b")}, "Mine");
        const auto found = theme.find({name}, size);
        return found ? std::filesystem::relative(*found, folder.at("")).string() : "";
    }
    TemporaryFolder folder;
};

TEST_F(IconThemeTest, ChoosesTheFolderMadeForTheSizeAndElseTheNearest) {
    folder.write("a/Mine/16/apps/app.png", "");
    folder.write("b/Mine/48/apps/app.png", "");
    EXPECT_EQ(find("app", 48), "b/Mine/48/apps/app.png") << "a theme may lie in several roots";
    EXPECT_EQ(find("app", 50), "b/Mine/48/apps/app.png") << "within the usual threshold";
    EXPECT_EQ(find("app", 30), "b/Mine/48/apps/app.png") << "too large is nearer than too small";
    EXPECT_EQ(find("app", 18), "a/Mine/16/apps/app.png");
    folder.write("a/Mine/scalable/apps/app.svg", "");
    EXPECT_EQ(find("app", 128), "a/Mine/scalable/apps/app.svg");
    EXPECT_EQ(find("app", 56), "b/Mine/48/apps/app.png") << "a bitmap that is near needs no renderer";
}

TEST_F(IconThemeTest, FallsBackToParentsAndThenToIconsWithoutTheme) {
    folder.write("b/Base/x/other.png", "");
    folder.write("b/plain.xpm", "");
    EXPECT_EQ(find("other", 48), "b/Base/x/other.png") << "themes that inherit one another in a circle end";
    EXPECT_EQ(find("plain", 48), "b/plain.xpm");
    EXPECT_EQ(find("absent", 48), "");
    EXPECT_EQ(find("../Mine/index", 48), "") << "names are not paths";
}

TEST(ThemeIndex, SkipsWhatMakesNoSense) {
    const auto index = parseThemeIndex("junk\n[Icon Theme]\nDirectories=a,b\n[a]\nSize=-5\n=\n[b\nSize=1\n");
    ASSERT_EQ(index.folders.size(), 1u) << "a folder without a section is none";
    EXPECT_EQ(index.folders[0].distance(48), 0);
    EXPECT_TRUE(parseThemeIndex("").folders.empty());
}

std::vector<uint32_t> squares(std::initializer_list<uint32_t> extents) {
    std::vector<uint32_t> out;
    for (const uint32_t extent : extents) {
        out.insert(out.end(), {extent, extent});
        out.insert(out.end(), size_t{extent} * extent, 0x80FF0000);
    }
    return out;
}

TEST(PropertyIcon, IsTheLargestThatFitsOrTheSmallestAndSurvivesLies) {
    const auto width = [](const std::vector<uint32_t>& property) { return choosePropertyIcon(property, 64)->width; };
    EXPECT_EQ(width(squares({16, 48, 32, 128})), 48) << "the largest that fits";
    EXPECT_EQ(width(squares({128, 64, 16})), 64) << "an exact one";
    EXPECT_EQ(width(squares({256, 96, 128})), 96) << "all too large";
    auto cutOff = squares({16, 32});
    cutOff.resize(cutOff.size() - 1);
    EXPECT_EQ(width(cutOff), 16);
    for (const std::vector<uint32_t>& bad :
         {std::vector<uint32_t>{}, {1}, {1, 1}, {0, 0, 5}, {0xFFFFFFFF, 0xFFFFFFFF, 1}, {65536, 65536, 1}})
        EXPECT_FALSE(choosePropertyIcon(bad, 64));
    const auto image = makeImage(*choosePropertyIcon(squares({1}), 64));
    EXPECT_EQ(*reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image->surface())), 0x80800000u)
        << "premultiplied";
}

TEST(Images, FilesThatAreNoPicturesAreNoImages) {
    const TemporaryFolder folder;
    EXPECT_EQ(loadImage(folder.write("text.png", "not a picture"), 48), nullptr);
    EXPECT_EQ(loadImage(folder.write("empty.svg", ""), 48), nullptr);
    EXPECT_EQ(loadImage(folder.at("absent.png"), 48), nullptr);
    EXPECT_EQ(loadImage("/dev/zero", 48), nullptr);
}

TEST(RenderedIcons, AVectorFileIsRenderedOnceForAsLongAsItStaysTheSame) {
    const TemporaryFolder folder;
    const auto square = [](const std::string& color) {
        return "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8' fill='" +
               color + "'/></svg>";
    };
    const auto firstPixel = [](const std::shared_ptr<const XImage>& image) {
        return image ? *reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image->surface())) : 0;
    };
    const std::string icon = folder.write("icon.svg", square("red"));
    const RenderedIcons icons(folder.at("cache"));
    const auto rendered = icons.load(icon, 32);
    if (!rendered) GTEST_SKIP() << "no SVG loader on this system";
    EXPECT_EQ(firstPixel(rendered), 0xFFFF0000u);

    const auto moment = std::filesystem::last_write_time(icon);
    folder.write("icon.svg", "no SVG any more, which would not render");
    std::filesystem::last_write_time(icon, moment);
    EXPECT_EQ(firstPixel(icons.load(icon, 32)), 0xFFFF0000u) << "from the cache";

    folder.write("icon.svg", square("blue"));
    std::filesystem::last_write_time(icon, moment + std::chrono::seconds(1));
    EXPECT_EQ(firstPixel(icons.load(icon, 32)), 0xFF0000FFu) << "a changed file is another picture";

    std::filesystem::remove_all(folder.at("cache"));
    folder.write("cache", "a file where the folder should be");
    EXPECT_EQ(firstPixel(icons.load(icon, 32)), 0xFF0000FFu) << "without a cache it is rendered each time";
}

TEST(Symbols, AreTemplatesWithSomethingOnThem) {
    for (const char* name : {"app.dashed", "xmark.circle.fill", "chevron.left", "chevron.right", "chevron.up",
                             "chevron.down", "magnifyingglass", "circle.grid.3x3.fill", "play.fill", "pause.fill",
                             "forward.fill", "backward.fill", "waveform"}) {
        const auto symbol = drawSymbol(name, 14);
        ASSERT_NE(symbol, nullptr) << name;
        EXPECT_TRUE(symbol->isTemplate());
        EXPECT_EQ(symbol->size(), (Size{14, 14}));
        const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(symbol->surface()));
        const auto count = size_t(symbol->pixelWidth()) * size_t(symbol->pixelHeight());
        const auto inked = std::count_if(pixels, pixels + count, [](uint32_t pixel) { return pixel >> 24 > 0x80; });
        EXPECT_GT(inked, 40) << name;
        EXPECT_LT(size_t(inked), count) << name;
    }
    EXPECT_EQ(drawSymbol("no.such.symbol", 14), nullptr);

    const auto pointsLeft = [](const char* name) {  // where the middle row has its ink
        const auto symbol = drawSymbol(name, 14);
        const int width = symbol->pixelWidth(), middle = symbol->pixelHeight() / 2;
        const auto* row = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(symbol->surface())) +
                          middle * cairo_image_surface_get_stride(symbol->surface()) / 4;
        return std::max_element(row, row + width) - row < width / 2;
    };
    EXPECT_TRUE(pointsLeft("chevron.left"));
    EXPECT_FALSE(pointsLeft("chevron.right"));
}

}  // namespace
}  // namespace morvel::x11
