#include "platform/run.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

#include "process/close_request.h"

namespace {

struct Recording {
    std::string path;
    std::FILE* file = nullptr;  ///< null: what would be written is kept
    std::string kept;
    std::string bytes;  ///< not written yet: the items of this frame
    RunCoder coder;
    std::int64_t frameCount = 0;
};

struct Replay {
    std::string path;
    ReplayEnd end = ReplayEnd::Close;
    bool catchesUp = false;  ///< with the kept run
    RecordedRun run;
    std::string_view rest;  ///< of the items of the run
    RunCoder coder;
    RunValues values[runItemKinds] = {};
    RunItem next;                 ///< the first one that is no reading of a device
    std::int64_t frameCount = 0;  ///< played
};

std::unique_ptr<Recording> recording;
std::unique_ptr<Replay> replay;
std::vector<RunFile> filesRead;  // while one of the two is there
int replayExitCode = 1;
bool handedOver = false;  // a moment ago

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Frame by frame, so that whatever ends the process leaves the run up to there.
void WriteOut() {
    if (recording->file == nullptr) {
        recording->kept += recording->bytes;
        recording->bytes.clear();
        return;
    }
    const bool written = std::fwrite(recording->bytes.data(), 1, recording->bytes.size(),
                                     recording->file) == recording->bytes.size() &&
                         std::fflush(recording->file) == 0;
    recording->bytes.clear();
    if (!written) {
        std::fprintf(stderr, "%s: error: can't be written after frame %lld: %s\n", recording->path.c_str(),
                     static_cast<long long>(recording->frameCount), std::strerror(errno));
        std::fclose(recording->file);
        recording.reset();
    }
}

void EndRecordedFrame(std::uint32_t motion) {
    recording->coder.Append(recording->bytes,
                            {RunItemKind::EndOfFrame, {static_cast<std::int32_t>(motion)}});
    if (recording->frameCount == 0 && recording->file != nullptr) {  // by now all files have been read
        recording->bytes.insert(0, RunHeadBytes(ENGINE_VERSION, FilesRead()));
    }
    recording->frameCount++;
    WriteOut();
}

/// What the devices have read up to the next message, or to the end of the frame, holds from now on.
void TakeReadings() {
    while (replay->coder.Take(replay->rest, replay->next) == RunCoder::Result::Taken &&
           replay->next.kind != RunItemKind::Message && replay->next.kind != RunItemKind::EndOfFrame) {
        replay->values[static_cast<int>(replay->next.kind)] = replay->next.values;
    }
}

/// The run plays all the same: it may be meant to show what a change of a file does.
void ReportOtherFiles() {
    const char* path = replay->path.c_str();
    if (replay->run.version != ENGINE_VERSION) {
        std::fprintf(stderr, "%s: note: recorded by engine %s; this is " ENGINE_VERSION "\n", path,
                     replay->run.version.c_str());
    }
    const std::vector<RunFile>& files = FilesRead();
    const auto find = [](const std::vector<RunFile>& among, const std::string& name) {
        return std::find_if(among.begin(), among.end(),
                            [&](const RunFile& file) { return file.name == name; });
    };
    for (const RunFile& file : files) {
        const auto recorded = find(replay->run.files, file.name);
        if (recorded == replay->run.files.end() || *recorded != file) {
            std::fprintf(stderr, "%s: note: %s when %s was recorded\n", file.name.c_str(),
                         recorded == replay->run.files.end() ? "not read" : "another content", path);
        }
    }
    for (const RunFile& file : replay->run.files) {
        if (find(files, file.name) == files.end()) {
            std::fprintf(stderr, "%s: note: read only when %s was recorded\n", file.name.c_str(), path);
        }
    }
}

void EndReplay() {
    if (replay->catchesUp) {
        replay.reset();
        return;
    }
    if (replay->end != ReplayEnd::ThenPlay) {
        RequestClose();
        return;
    }
    replay.reset();
    filesRead.clear();
    handedOver = true;
}

/// Who records a run anew wants all of it.
bool StopsAtDifference() {
    return replay->end == ReplayEnd::Verify && recording == nullptr;
}

void EndReplayedFrame(std::uint32_t motion) {
    if (replay->frameCount == replay->run.frameCount) {
        return;  // the program is about to close
    }
    if (replay->frameCount == 0 && !replay->catchesUp) {
        replayExitCode = 0;
        ReportOtherFiles();
    }
    while (replay->next.kind == RunItemKind::Message) {
        TakeReadings();  // nobody has asked for it
    }
    replay->frameCount++;
    const bool differs = static_cast<std::uint32_t>(replay->next.values[0]) != motion;
    if (differs && replayExitCode == 0 && !replay->catchesUp) {
        replayExitCode = 1;
        std::fprintf(stderr, "%s: error: the motion of frame %lld differs from the recorded one\n",
                     replay->path.c_str(), static_cast<long long>(replay->frameCount));
    }
    TakeReadings();
    if (replay->frameCount == replay->run.frameCount || (differs && StopsAtDifference())) {
        EndReplay();
    }
}

}  // namespace

std::string RecordRun(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return std::strerror(errno);
    }
    recording = std::make_unique<Recording>();
    recording->path = path;
    recording->file = file;
    return {};
}

std::string ReplayRun(const std::string& path, ReplayEnd end) {
    const std::string bytes = ReadFile(path);
    if (bytes.empty()) {
        return "can't be read, or is empty";
    }
    auto newReplay = std::make_unique<Replay>();
    std::string wrong = ReadRun(bytes, newReplay->run);
    if (!wrong.empty()) {
        return wrong;
    }
    if (!newReplay->run.isWhole) {
        std::fprintf(stderr, "%s: note: the recording was cut off after frame %lld\n", path.c_str(),
                     static_cast<long long>(newReplay->run.frameCount));
    }
    replay = std::move(newReplay);
    replay->path = path;
    replay->end = end;
    replay->rest = replay->run.items;
    TakeReadings();
    return {};
}

bool RunIsReplayed() {
    return replay != nullptr;
}

int ReplayExitCode() {
    assert(replay != nullptr);
    const auto played = static_cast<long long>(replay->frameCount);
    const auto recorded = static_cast<long long>(replay->run.frameCount);
    if (played < recorded && replayExitCode == 0) {
        std::fprintf(stderr, "%s: error: ended after %lld of %lld frames\n", replay->path.c_str(), played,
                     recorded);
        return 1;
    }
    if (replayExitCode == 0) {
        std::printf("%s: %lld frames, whose motion is the recorded one\n", replay->path.c_str(), played);
    }
    return replayExitCode;
}

void KeepRun() {
    recording = std::make_unique<Recording>();
}

void CatchUpWithRun() {
    assert(recording != nullptr && "kept by KeepRun");
    if (recording->frameCount == 0) {
        return;
    }
    replay = std::make_unique<Replay>();
    replay->catchesUp = true;
    replay->run.items = recording->kept;
    replay->run.frameCount = recording->frameCount;
    replay->rest = replay->run.items;
    TakeReadings();
}

bool RunCatchesUp() {
    return replay != nullptr && replay->catchesUp;
}

const std::vector<RunFile>& FilesRead() {
    return filesRead;
}

std::vector<RunFile> FilesNow() {
    std::vector<RunFile> files = filesRead;
    for (RunFile& file : files) {
        file.checksum = ChecksumOf(ReadFile(file.name));
    }
    return files;
}

void ForgetFilesRead() {
    filesRead.clear();
}

bool FramesAreShown() {
    return replay == nullptr || (replay->end != ReplayEnd::Verify && !replay->catchesUp);
}

bool RunIsOn() {
    return recording != nullptr || replay != nullptr;
}

void EndRunFrame(std::uint32_t motion) {
    if (recording != nullptr && !RunCatchesUp()) {
        EndRecordedFrame(motion);
    }
    if (replay != nullptr) {
        EndReplayedFrame(motion);
    }
}

void NoteRunFile(const std::string& name) {
    const auto hasName = [&](const RunFile& file) { return file.name == name; };
    if (RunIsOn() && std::none_of(filesRead.begin(), filesRead.end(), hasName)) {
        filesRead.push_back({name, ChecksumOf(ReadFile(name))});
    }
}

void NoteRunMessage(UINT message, WPARAM wParam) {
    if (recording != nullptr) {
        recording->coder.Append(recording->bytes,
                                {RunItemKind::Message,
                                 {static_cast<std::int32_t>(message), static_cast<std::int32_t>(wParam)}});
    }
}

void EndRecording() {
    if (recording != nullptr && recording->file != nullptr && recording->frameCount > 0) {
        recording->bytes.clear();
        recording->coder.Append(recording->bytes, {RunItemKind::EndOfRun, {}});
        WriteOut();
    }
    if (recording != nullptr && recording->file != nullptr) {
        std::fclose(recording->file);
        recording.reset();
    }
}

bool TakeHandover() {
    return std::exchange(handedOver, false);
}

bool PeekRunMessage(UINT& message, WPARAM& wParam) {
    assert(RunIsReplayed());
    if (replay->next.kind != RunItemKind::Message || replay->frameCount == replay->run.frameCount) {
        return false;
    }
    message = static_cast<UINT>(replay->next.values[0]);
    wParam = static_cast<std::uint32_t>(replay->next.values[1]);
    return true;
}

bool TakeRunMessage(UINT& message, WPARAM& wParam) {
    const bool found = PeekRunMessage(message, wParam);
    if (found) {
        TakeReadings();
    }
    return found;
}

const RunValues& ReplayedValues(RunItemKind kind) {
    assert(RunIsReplayed());
    return replay->values[static_cast<int>(kind)];
}

void NoteRunValues(RunItemKind kind, const RunValues& values) {
    if (recording != nullptr && !RunCatchesUp() &&
        recording->coder.last[static_cast<int>(kind)] != values) {
        recording->coder.Append(recording->bytes, {kind, values});
    }
}
