#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "scene/scene.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/engine_process.h"
#include "support/virtual_display.h"

// What goes wrong around the engine: it tells, goes on where it can, and never hangs.

namespace {

constexpr const char* withoutDisplay = "unset DISPLAY WAYLAND_DISPLAY;";

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Faults, AFolderInPlaceOfTheLog) {
    TemporaryFolder folder;
    WriteWholeFile("settings.atr", "}");
    std::filesystem::create_directory("defaultlog.txt");
    EngineProcess engine(withoutDisplay);
    EXPECT_EQ(engine.WaitForExit(), 1);
    EXPECT_TRUE(Contains(EngineProcess::Errors(), "[:-(] Nelze zahájit logování\n"));
}

TEST(Faults, AFullDiskForTheLog) {
    TemporaryFolder folder;
    WriteWholeFile("settings.atr", "}");
    std::filesystem::create_symlink("/dev/full", "defaultlog.txt");
    EngineProcess engine(withoutDisplay);
    EXPECT_EQ(engine.WaitForExit(), 1);
}

TEST(Faults, AFolderInPlaceOfTheSettings) {
    TemporaryFolder folder;
    std::filesystem::create_directory("settings.atr");
    EngineProcess engine(withoutDisplay);
    EXPECT_EQ(engine.WaitForExit(), 1);
    const std::string told = "[:-(] Nebyl nalezen soubor s nastavením\n";
    const std::string errors = EngineProcess::Errors();
    const std::size_t first = errors.find(told);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(errors.find(told, first + 1), std::string::npos);  // once for each of the two passes
}

TEST(Faults, AMissingSceneIsToldAndAMissingSgiImageEndsTheProcess) {
    TemporaryFolder folder;
    SceneObject box = MakeBox("Box", {0, 0, 0}, {1, 1, 1}, 1);
    AddMarkers(box, {0.5f, 0.5f, 0.5f});
    WriteSceneFile("box.bin", {box});
    WriteWholeFile("box.atr", "Box { *TEXTURE missing.rgb }");
    WriteWholeFile("settings.atr", "*LOADMESH nowhere.bin *LOADMESH box.bin *LOADMESH never.bin }");
    EngineProcess engine(withoutDisplay);
    EXPECT_EQ(engine.WaitForExit(), 1);
    EXPECT_TRUE(Contains(EngineProcess::Errors(), "[:-(] Tento soubor chybí: nowhere.bin\n"));
    EXPECT_TRUE(Contains(EngineProcess::Errors(), "[:-(] Nenalezen soubor s Texturou\n"));
    EXPECT_TRUE(Contains(EngineProcess::Errors(), "No such file or directory"));
    EXPECT_FALSE(Contains(EngineProcess::Errors(), "never.bin"));
    EXPECT_EQ(LogEntries(EngineProcess::Log()).back(), "Nahr\xE1v\xE1 se sc\xE9na: box.bin");
}

/// Sizes that no window can have, and viewports that no window holds.
TEST(Faults, ImpossibleSizesAreSurvived) {
    VirtualDisplay display(WindowManager::Openbox);
    for (const char* resolution : {"0 0 16", "-50 -1 32", "1 1 255", "2000000000 2000000000 32"}) {
        TemporaryFolder folder;
        WriteWholeFile("settings.atr",
                       std::string("*RESOLUTION ") + resolution +
                           " *FRAMERATELIMIT 50 *PLAYERCOUNT 1 *PLAYERVIEWPORT 0 -5 -5 -100 -100 }");
        EngineProcess engine;
        int code = -1;
        WaitUntil([&] {
            // Whatever is shown, a window or a box, takes one of these.
            display.Xdotool("key Return keydown Escape sleep 0.3 keyup Escape");
            return engine.HasEnded(code);
        });
        EXPECT_EQ(code, 1) << resolution;
    }
}

TEST(Faults, ADisplayThatGoesAwayEndsTheProcess) {
    TemporaryFolder folder;
    WriteWholeFile("settings.atr", "*FRAMERATELIMIT 50 }");
    VirtualDisplay display;
    EngineProcess engine;
    ASSERT_TRUE(EngineProcess::WaitForLog("Font built succesfully"));
    usleep(300000);
    display.KillServer();
    int code = -1;
    EXPECT_TRUE(WaitUntil([&] { return engine.HasEnded(code); }));
}

/// Another program writes the scene again and again while it is loaded.
TEST(Faults, FilesThatChangeWhileTheyAreReadDoNoHarm) {
    TemporaryFolder folder;
    const SceneObject grid = MakeGrid("Grid", {0, 0, 0}, {9, 0, 0}, {0, 9, 0}, 30, 30, 2);
    const std::string large = SceneFileBytes({grid, grid, grid});
    const std::string small = SceneFileBytes({MakeBox("Box", {0, 0, 0}, {1, 1, 1})});
    WriteWholeFile("scene.bin", large);
    std::atomic<bool> done = false;
    std::thread writer([&] {
        while (!done) {
            WriteWholeFile("scene.bin", small);
            WriteWholeFile("scene.bin", large);
        }
    });
    testing::internal::CaptureStderr();  // the boxes
    for (int load = 0; load < 100; load++) {
        Scene scene;
        scene.LoadMesh("scene.bin");
        scene.StepWorld();
    }
    done = true;
    writer.join();
    testing::internal::GetCapturedStderr();
    Scene scene;
    EXPECT_TRUE(scene.LoadMesh("scene.bin"));
}

}  // namespace
