#include <gtest/gtest.h>

#include <functional>

#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/engine_process.h"

// What goes wrong around the engine: it is reported, the engine goes on where it can, and never hangs.

namespace {

using Lines = std::vector<std::string>;

#ifdef __SANITIZE_ADDRESS__  // it needs more address space than a limit would leave
constexpr const char* surroundings = "unset DISPLAY WAYLAND_DISPLAY;";
#else
constexpr const char* surroundings = "unset DISPLAY WAYLAND_DISPLAY; ulimit -v 4000000;";
#endif

TEST(Faults, AreToldAndEndTheProcessWithItsCode) {
    const struct {
        std::string settings;
        std::function<void()> prepare;
        Lines told, notTold;  ///< on the standard error stream
        std::string lastEntry;
    } cases[] = {
        {"*PLAYERCOUNT 1 }",
         [] {},
         {"[:-(] Chyba: ChoosePixelFormat\n", "[:-(] Chyba: wglCreateContext\n"},
         {"check_scene"},
         ""},
        {"}",
         [] { std::filesystem::create_directory("defaultlog.txt"); },
         {"[:-(] Nelze zahájit logování\n"},
         {},
         ""},
        {"}", [] { std::filesystem::create_symlink("/dev/full", "defaultlog.txt"); }, {}, {}, ""},
        {"*LOADMESH nowhere.bin *LOADMESH box.bin *LOADMESH never.bin }",
         [] {
             engine::WriteSceneFile("box.bin", {engine::MakeBox("Box", {0, 0, 0}, {1, 1, 1})});
             WriteWholeFile("box.atr", "Box { *TEXTURE missing.rgb }");
         },
         {"[:-(] Tento soubor chybí: nowhere.bin\n", "[:-(] Nenalezen soubor s Texturou\n",
          "missing.rgb: No such file or directory", "\ncheck_scene "},
         {"never.bin"},
         "Nahr\xE1v\xE1 se sc\xE9na: box.bin"},
#ifndef __SANITIZE_ADDRESS__
        {"*PLAYERCOUNT 2000000000 }",
         [] {},
         {"Nedostatek paměti pro operátor new\n"},
         {"Chyba"},
         "Nedostatek pam\xECti pro oper\xE1tor new"},
#endif
    };
    for (const auto& fault : cases) {
        SCOPED_TRACE(fault.settings);
        TemporaryFolder folder;
        WriteWholeFile("settings.atr", fault.settings);
        fault.prepare();
        EngineProcess engine(surroundings);
        EXPECT_EQ(engine.WaitForExit(), 1);
        for (const std::string& text : fault.told) {
            EXPECT_NE(EngineProcess::Errors().find(text), std::string::npos) << text;
        }
        for (const std::string& text : fault.notTold) {
            EXPECT_EQ(EngineProcess::Errors().find(text), std::string::npos) << text;
        }
        EXPECT_TRUE(fault.lastEntry.empty() || LogEntries(EngineProcess::Log()).back() == fault.lastEntry);
    }
}

/// Sizes that no window can have, and viewports that no window holds.
TEST(Faults, ImpossibleSizesAreSurvived) {
    VirtualDisplay display(WindowManager::Openbox);
    for (const char* resolution : {"0 0 16", "1 1 255", "2000000000 2000000000 32"}) {
        TemporaryFolder folder;
        WriteWholeFile("settings.atr",
                       std::string("*RESOLUTION ") + resolution +
                           " *FRAMERATELIMIT 50 *PLAYERCOUNT 1 *PLAYERVIEWPORT 0 -5 -5 -100 -100 }");
        EngineProcess engine;
        int code = -1;
        EXPECT_TRUE(WaitUntil([&] {
            // Whatever is shown, a window or a box, takes one of these.
            display.Xdotool("key Return keydown Escape sleep 0.3 keyup Escape");
            return engine.HasEnded(code);
        }));
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

}  // namespace
