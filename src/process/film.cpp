#include "process/film.h"

#include <sys/wait.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "process/close_request.h"
#include "process/picture.h"
#include "process/save_file.h"

namespace {

std::string filmPath;
bool isVideo = false;
int period = 20;             // milliseconds
std::FILE* video = nullptr;  // what ffmpeg reads
int videoWidth = 0;
int videoHeight = 0;
int frameCount = 0;
std::string failure;

/// For the shell.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char letter : text) {
        quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    }
    return quoted + "'";
}

/// The rows come from the bottom, and the format wants even sides.
void OpenVideo(int width, int height) {
    const std::string command =
        "exec ffmpeg -loglevel error -y -f rawvideo -pixel_format rgb24 -video_size " +
        std::to_string(width) + "x" + std::to_string(height) + " -framerate 1000/" +
        std::to_string(period) + " -i - -vf 'vflip,pad=ceil(iw/2)*2:ceil(ih/2)*2' -pix_fmt yuv420p " +
        Quoted(filmPath);
    video = popen(command.c_str(), "w");
    videoWidth = width;
    videoHeight = height;
}

std::string WriteVideoFrame(int width, int height) {
    if (video == nullptr) {
        OpenVideo(width, height);
    }
    if (video == nullptr || width != videoWidth || height != videoHeight) {
        return "the window's size has changed";
    }
    const auto picture = ReadPicture(width, height);
    return std::fwrite(picture.data(), 1, picture.size(), video) == picture.size() ? ""
                                                                                   : "ffmpeg has ended";
}

std::string WriteImage(int width, int height) {
    char name[32];
    std::snprintf(name, sizeof name, "/%06d.png", frameCount);
    return SavePicture(filmPath + name, width, height);
}

}  // namespace

std::string StartFilm(const std::string& path) {
    filmPath = path;
    isVideo = std::filesystem::path(path).extension() == ".mp4";
    if (isVideo) {
        return std::system("ffmpeg -version >/dev/null 2>&1") == 0
                   ? ReasonNotToSave(path)
                   : "a video needs ffmpeg, which isn't installed; a folder in its place takes PNG images";
    }
    std::error_code wrong;
    std::filesystem::create_directories(path, wrong);
    return wrong ? wrong.message() : "";
}

void SetFilmPeriod(int milliseconds) {
    assert(milliseconds > 0);
    period = milliseconds;
}

void FilmFrame(int width, int height) {
    if (filmPath.empty() || !failure.empty() || width <= 0 || height <= 0) {
        return;  // a minimised window has no picture
    }
    frameCount++;
    failure = isVideo ? WriteVideoFrame(width, height) : WriteImage(width, height);
    if (!failure.empty()) {
        RequestClose();
    }
}

std::string EndFilm() {
    if (video != nullptr && pclose(video) != 0 && failure.empty()) {
        failure = "ffmpeg has failed";
    }
    video = nullptr;
    return failure.empty() ? ""
                           : filmPath + ": error: frame " + std::to_string(frameCount) + ": " + failure;
}
