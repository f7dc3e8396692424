#pragma once

#include <cstdint>
#include <string>

#include "platform/run_file.h"
#include "platform/types.h"

// Recording what the devices give to the program, and giving it that again. It stands below everything that
// asks for devices, so whoever asks doesn't see the difference. A frame is one turn of the loop that pumps,
// samples and steps; everything before the first pump belongs to the first.

// For the process entry.

/// From now on all is written to that file, frame by frame.
/// @return empty, or the system's reason why it can't be
std::string RecordRun(const std::string& path);

enum class ReplayEnd {
    Close,     ///< the window is closed after the last frame
    ThenPlay,  ///< the living player goes on from there
    Verify,  ///< as `Close`, and nothing is shown; the first frame whose motion differs is the last, unless
             ///< the run is recorded anew
};
/// From now on the file's run is what the devices give. The real ones can but close the window.
/// @return empty, or what is wrong with the file
std::string ReplayRun(const std::string& path, ReplayEnd end);
bool RunIsReplayed();
/// From now on the run is kept in memory, to be caught up with. One that was kept is forgotten.
void KeepRun();
/// For a program that has replayed a run, at its end: 1 if the motion of a frame differed, or the run
/// wasn't played to its end, 0 otherwise. Writes to the standard error stream how far it came.
int ReplayExitCode();

// For the frame loop.

/// Whether frames are drawn at all, and at the pace of the settings. Not so while a run is only verified.
bool FramesAreShown();
/// Whether a run is recorded or replayed, so that `EndRunFrame` wants to be called after each step.
bool RunIsOn();
/// @param motion a checksum of all motion after the step; recorded, or compared with the recorded one
void EndRunFrame(std::uint32_t motion);

// For loading the world anew, while the run is kept.

/// Replays the run so far, frame after frame, until it is over: nothing is shown meanwhile.
void CatchUpWithRun();
bool RunCatchesUp();
/// The files that were opened for reading since these were forgotten, there or not, as they were then.
const std::vector<RunFile>& FilesRead();
/// These files, as they are now.
std::vector<RunFile> FilesNow();
void ForgetFilesRead();

// For the layer itself.

/// A file is opened for reading, if it is there.
void NoteRunFile(const std::string& name);
/// A message has been handed out.
void NoteRunMessage(UINT message, WPARAM wParam);
/// Ends the record before the present frame: the one that the program ends in. Who replays it can play on.
void EndRecording();
/// True once after the end of a run from which the living player goes on.
bool TakeHandover();
/// While a run is replayed: the next message of its frame; false if that has no more.
bool PeekRunMessage(UINT& message, WPARAM& wParam);
/// Takes that message; false if there is none.
bool TakeRunMessage(UINT& message, WPARAM& wParam);

/// What the devices gave in the run that is replayed, as far as it has come.
const RunValues& ReplayedValues(RunItemKind kind);
void NoteRunValues(RunItemKind kind, const RunValues& values);

/// What `ask` finds, or the run has found in its place.
template <typename Ask>
RunValues ThroughRun(RunItemKind kind, Ask ask) {
    const RunValues values = RunIsReplayed() ? ReplayedValues(kind) : ask();
    NoteRunValues(kind, values);
    return values;
}
