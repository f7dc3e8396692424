#include "platform/run_file.h"

#include <gtest/gtest.h>

#include "platform/message_queue.h"

namespace {

const std::string head = RunHeadBytes("1.2", {{"data/world.bin", ~0ull}, {"settings.atr", 7}});

TEST(RunFile, GivesBackWhatWasWritten) {
    const RunItem items[] = {{RunItemKind::OuterRectangle, {-8, 30, 632, 510}},
                             {RunItemKind::ClientSize, {640, 480}},
                             {RunItemKind::Message, {WM_KEYDOWN, 0x26}},
                             {RunItemKind::Activity, {1}},
                             {RunItemKind::CursorPlace, {1, 1 << 24, -(1 << 24)}},
                             {RunItemKind::EndOfFrame, {-2147483647 - 1}},
                             {RunItemKind::CursorPlace, {1, -(1 << 24), 1 << 24}},
                             {RunItemKind::Joystick, {0, 65535, 0, -1}},
                             {RunItemKind::TurnTime, {20}},
                             {RunItemKind::EndOfFrame, {2147483647}},
                             {RunItemKind::EndOfRun, {}}};
    std::string bytes = head;
    RunCoder writer;
    for (const RunItem& item : items) {
        writer.Append(bytes, item);
    }
    RecordedRun run;
    EXPECT_EQ(ReadRun(bytes, run), "");
    EXPECT_EQ(run.version, "1.2");
    EXPECT_EQ(run.files, (std::vector<RunFile>{{"data/world.bin", ~0ull}, {"settings.atr", 7}}));
    EXPECT_TRUE(run.isWhole);
    EXPECT_EQ(run.frameCount, 2);
    std::string_view rest = run.items;
    RunCoder reader;
    for (std::size_t i = 0; i + 1 < std::size(items); i++) {
        RunItem item;
        EXPECT_EQ(reader.Take(rest, item), RunCoder::Result::Taken);
        EXPECT_TRUE(item == items[i]) << i;
    }
    EXPECT_TRUE(rest.empty());
    EXPECT_NE(ReadRun(bytes + '\0', run), "") << "something after the end";
}

TEST(RunFile, IsCutOffAtWholeFrames) {
    std::string bytes = head;
    RunCoder writer;
    writer.Append(bytes, {RunItemKind::EndOfFrame, {1000}});
    const std::size_t oneFrame = bytes.size();
    writer.Append(bytes, {RunItemKind::Message, {WM_KEYDOWN, 0x26}});
    writer.Append(bytes, {RunItemKind::EndOfFrame, {2000}});
    for (std::size_t size = 0; size < bytes.size(); size++) {
        RecordedRun run;
        const bool playable = ReadRun(std::string_view(bytes).substr(0, size), run).empty();
        EXPECT_EQ(playable, size >= oneFrame) << size;
        EXPECT_EQ(run.frameCount, playable ? 1 : 0) << size;
        EXPECT_FALSE(run.isWhole) << size;
    }
}

TEST(RunFile, RefusesWhatNoDeviceGives) {
    const RunItem wrong[] = {{RunItemKind::Message, {WM_DESTROY}},
                             {RunItemKind::Message, {-1}},
                             {RunItemKind::CursorPlace, {1, (1 << 24) + 1}},
                             {RunItemKind::OuterRectangle, {0, 0, 0, -2147483647 - 1}}};
    for (const RunItem& item : wrong) {
        std::string bytes = head;
        RunCoder().Append(bytes, {RunItemKind::EndOfFrame, {1000}});
        RunCoder().Append(bytes, item);
        RecordedRun run;
        EXPECT_NE(ReadRun(bytes, run), "") << static_cast<int>(item.kind);
    }
}

}  // namespace
