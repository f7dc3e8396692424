#include "render/overlay_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "gl_recorder.h"
#include "platform/fonts.h"
#include "render_test.h"

struct OverlayTextTest : RenderTest {
    void BuildFont() {
        std::string name = "Courier New";
        scene.BuildFont(engine, name);
    }
    /// Pixels of the rectangle that are not of this colour.
    int CountOthers(Colour colour, int left, int bottom, int width, int height) {
        int count = 0;
        for (int y = bottom; y < bottom + height; y++) {
            for (int x = left; x < left + width; x++) {
                count += Pixel(x, y) != colour ? 1 : 0;
            }
        }
        return count;
    }
};

TEST_F(OverlayTextTest, RateStandsAtTheWindowsCornerInFrontOfEverything) {
    BuildFont();
    AddPlayer(Vector(0, -eyeDistance, 0), Vector(0, 0, 0), {100, 100, 100, 100});
    AddPlayer(Vector(0, -0.2f, 0), Vector(0, 0, 0), {0, 0, 100, 200});
    AddHeadlight();
    Paint(AddRectangle(-90, -90, 90, 90), 1, 0, 0);
    for (const bool safe : {false, true}) {
        Draw(safe);
        EXPECT_GT(CountOthers(red, 10, 10, 60, 10), 60) << "strokes of nine characters";
        EXPECT_LT(CountOthers(red, 10, 10, 60, 10), 300);
        EXPECT_EQ(CountOthers(red, 0, 20, 100, 20), 0);
        EXPECT_EQ(CountOthers(red, 0, 0, 10, 40), 0);
        EXPECT_EQ(CountOthers(red, 110, 110, 80, 20), 0) << "not at the viewport's corner";
    }
}

TEST_F(OverlayTextTest, LongTextIsCutAndNoTextIsFine) {
    BuildFont();
    GlRecorder recorder;
    scene.PrintText("%s", std::string(1000, 'x').c_str());
    scene.PrintText("%s", "");
    const char* nothing = nullptr;
    scene.PrintText(nothing, 1);
    EXPECT_EQ(
        recorder.CallsOf({"glCallLists"}),
        (std::vector<std::string>{"glCallLists \"" + std::string(255, 'x') + '"', "glCallLists \"\""}));
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(OverlayTextTest, BuildingAppendsToTheNameAndKeepsTheUnpackState) {
    scene.fontName = "Courier New";
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    scene.BuildFont(engine, scene.fontName);
    EXPECT_EQ(scene.fontName, "Courier New: Font built succesfully");
    EXPECT_NE(ReadWholeFile("defaultlog.txt").find(" Courier New: Font built succesfully\n"),
              std::string::npos);
    for (const auto& [setting, expected] :
         {std::pair{GL_UNPACK_ALIGNMENT, 1}, {GL_UNPACK_ROW_LENGTH, 77}}) {
        GLint value = -1;
        glGetIntegerv(setting, &value);
        EXPECT_EQ(value, expected);
    }
    EXPECT_TRUE(glIsList(scene.fontListBase + 95));
    scene.ReleaseFont();
    EXPECT_FALSE(glIsList(scene.fontListBase + 95));
}
