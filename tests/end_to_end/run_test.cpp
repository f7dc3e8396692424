#include "platform/run_file.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/engine_process.h"

#include <gtest/gtest.h>

// A run is recorded on a display, and verified without one.

using namespace engine;

namespace {

CommandResult Verify(const std::string& run) {
    return RunCommand("env -u DISPLAY ASAN_OPTIONS=exitcode=99:detect_leaks=0 " ENGINE_PROGRAM
                      " --replay " +
                      run + " --verify 2>&1");
}

/// The items of the run with the checksum of one frame changed by a bit.
std::string ChangeFrame(const RecordedRun& run, int frame) {
    std::string bytes = RunHeadBytes(run.version, run.files);
    std::string_view rest = run.items;
    RunCoder reader, writer;
    for (RunItem item; reader.Take(rest, item) == RunCoder::Result::Taken;) {
        if (item.kind == RunItemKind::EndOfFrame && --frame == 0) {
            item.values[0] ^= 1;
        }
        writer.Append(bytes, item);
    }
    return bytes;
}

/// Keys push a stone, which nothing but the recorded ones can do again.
TEST(Runs, AKilledOneIsVerifiedUpToThereAndADifferenceIsTold) {
    TemporaryFolder folder;
    VirtualDisplay display;
    SceneObject stone = MakeBox("Stone", {-1, -1, -1}, {1, 1, 1});
    AddMarkers(stone, {0, 0, 0});
    WriteSceneFile("world.bin", {stone, MakeCamera("Camera", {0, -9, 0}, {0, 0, 0})});
    WriteWholeFile("world.atr", "Stone { *PLAYEROBJECT 0 } Camera { *CAMERAOBJECT 0 0 1 }");
    WriteWholeFile("settings.atr", "*PLAYERCOUNT 1 *FRAMERATELIMIT 50 *LOADMESH world.bin }");
    EngineProcess engine("", "--record walk.run");
    RecordedRun run;
    const auto isWalk = [&] {
        ReadRun(ReadWholeFile("walk.run"), run);
        const std::string upIsPressed("\x01\x80\x04\x4C", 4);
        return run.items.find(upIsPressed) != std::string::npos && run.frameCount > 5;
    };
    display.WaitForWindow("Engine");
    ASSERT_TRUE(WaitUntil([&] {
        display.Xdotool("key Up");
        return isWalk();
    }));
    kill(engine.id, SIGKILL);
    EXPECT_EQ(engine.WaitForExit(), -1);
    isWalk();
    EXPECT_EQ(run.files.size(), 3u);

    const CommandResult verified = Verify("walk.run");
    EXPECT_EQ(verified.exitCode, 0) << verified.output;
    EXPECT_NE(verified.output.find(" " + std::to_string(run.frameCount) + " frames"), std::string::npos);
    EXPECT_EQ(
        RunCommand("ASAN_OPTIONS=detect_leaks=0 " ENGINE_PROGRAM " --replay walk.run --film film 2>&1")
            .exitCode,
        0);
    const std::filesystem::directory_iterator pictures("film");
    EXPECT_EQ(std::distance(begin(pictures), end(pictures)), run.frameCount);
    WriteWholeFile("other.run", ChangeFrame(run, 3));
    const CommandResult differs = Verify("other.run");
    EXPECT_EQ(differs.exitCode, 1);
    EXPECT_NE(differs.output.find("frame 3 "), std::string::npos) << differs.output;
    WriteWholeFile("damaged.run", ReadWholeFile("walk.run") + '\x0B');
    EXPECT_EQ(Verify("damaged.run").exitCode, 2);
    // It plays with other files, too.
    WriteWholeFile("world.atr", "Camera { *CAMERAOBJECT 0 0 1 *PLAYEROBJECT 0 }");
    const CommandResult changed = Verify("walk.run");
    EXPECT_EQ(changed.exitCode, 1);
    EXPECT_NE(changed.output.find("world.atr: note: "), std::string::npos) << changed.output;
}

}  // namespace
