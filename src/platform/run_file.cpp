#include "platform/run_file.h"

#include <algorithm>

#include "platform/message_queue.h"

namespace {

constexpr std::string_view magic = "EngRun\r\n";  // the line end shows a transfer that has changed them
constexpr std::uint64_t formatVersion = 1;
constexpr std::uint64_t longestText = 4096;  // bytes of a name
constexpr std::uint64_t mostFiles = 100000;

/// Beyond any screen, and so small that sums and differences don't overflow.
constexpr std::int32_t farthestPixel = 1 << 24;

/// Values of each kind.
constexpr int valueCounts[runItemKinds] = {1, 2, 4, 2, 1, 3, 4, 1, 0};

int CountOf(RunItemKind kind) {
    return valueCounts[static_cast<int>(kind)];
}

/// Only of these the next value is likely to be near the last.
bool StoresDifferences(RunItemKind kind) {
    return kind != RunItemKind::EndOfFrame && kind != RunItemKind::Message;
}

/// Seven bits a byte, the lowest first; the highest bit is set where more follow.
void AppendNumber(std::string& bytes, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) {
        bytes += static_cast<char>(number | 0x80);
    }
    bytes += static_cast<char>(number);
}

RunCoder::Result TakeNumber(std::string_view& bytes, std::uint64_t& number) {
    number = 0;
    for (std::size_t i = 0; i < 10; i++) {
        if (i == bytes.size()) {
            return RunCoder::Result::CutOff;
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        number |= std::uint64_t{byte & 0x7Fu} << (7 * i);
        if (byte < 0x80) {
            bytes.remove_prefix(i + 1);
            return RunCoder::Result::Taken;
        }
    }
    return RunCoder::Result::Damaged;
}

/// The sign goes to the lowest bit, so that small numbers of either sign are short.
std::uint64_t WithoutSign(std::int64_t value) {
    return value < 0 ? ~(static_cast<std::uint64_t>(value) << 1) : static_cast<std::uint64_t>(value) << 1;
}
std::int64_t WithSign(std::uint64_t number) {
    const auto half = static_cast<std::int64_t>(number >> 1);
    return (number & 1) != 0 ? -half - 1 : half;
}

/// All that the queue makes of events; those that make or end the window are none of a device's.
bool IsFromDevices(std::int32_t message) {
    const auto code = static_cast<UINT>(message);
    return code == WM_MOVE || code == WM_SIZE || code == WM_ACTIVATE ||
           (code >= WM_KEYDOWN && code <= WM_SYSKEYUP) || (code >= WM_MOUSEMOVE && code <= WM_MBUTTONUP);
}

bool CanBe(const RunItem& item) {
    const auto isOnScreen = [](std::int32_t value) {
        return value >= -farthestPixel && value <= farthestPixel;
    };
    switch (item.kind) {
        case RunItemKind::Message:
            return IsFromDevices(item.values[0]);
        case RunItemKind::OuterRectangle:
        case RunItemKind::ClientSize:
        case RunItemKind::CursorPlace:
            return std::all_of(item.values.begin(), item.values.end(), isOnScreen);
        default:
            return true;
    }
}

void AppendText(std::string& bytes, const std::string& text) {
    AppendNumber(bytes, text.size());
    bytes += text;
}

bool TakeText(std::string_view& bytes, std::string& text) {
    std::uint64_t length = 0;
    if (TakeNumber(bytes, length) != RunCoder::Result::Taken || length > longestText ||
        length > bytes.size()) {
        return false;
    }
    text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return true;
}

bool TakeFiles(std::string_view& bytes, std::vector<RunFile>& files) {
    std::uint64_t count = 0;
    if (TakeNumber(bytes, count) != RunCoder::Result::Taken || count > mostFiles) {
        return false;
    }
    for (std::uint64_t i = 0; i < count; i++) {
        RunFile file;
        if (!TakeText(bytes, file.name) || TakeNumber(bytes, file.checksum) != RunCoder::Result::Taken) {
            return false;
        }
        files.push_back(file);
    }
    return true;
}

/// @return empty, or what is wrong with the bytes
std::string TakeHead(std::string_view& bytes, RecordedRun& run) {
    if (!bytes.starts_with(magic)) {
        return "this is no recorded run";
    }
    bytes.remove_prefix(magic.size());
    std::uint64_t format = 0;
    if (TakeNumber(bytes, format) == RunCoder::Result::Taken && format != formatVersion) {
        return "a run of format " + std::to_string(format) + ", and this program reads format " +
               std::to_string(formatVersion);
    }
    return TakeText(bytes, run.version) && TakeFiles(bytes, run.files) ? ""
                                                                       : "its head is damaged or cut off";
}

}  // namespace

void RunCoder::Append(std::string& bytes, const RunItem& item) {
    bytes += static_cast<char>(item.kind);
    RunValues& before = last[static_cast<int>(item.kind)];
    for (int i = 0; i < CountOf(item.kind); i++) {
        AppendNumber(bytes, WithoutSign(std::int64_t{item.values[i]} - before[i]));
    }
    if (StoresDifferences(item.kind)) {
        before = item.values;
    }
}

RunCoder::Result RunCoder::Take(std::string_view& bytes, RunItem& item) {
    std::string_view rest = bytes;
    if (rest.empty()) {
        return Result::CutOff;
    }
    const int kind = static_cast<unsigned char>(rest[0]);
    if (kind >= runItemKinds) {
        return Result::Damaged;
    }
    rest.remove_prefix(1);
    item = {static_cast<RunItemKind>(kind), {}};
    for (int i = 0; i < valueCounts[kind]; i++) {
        std::uint64_t number = 0;
        const Result result = TakeNumber(rest, number);
        if (result != Result::Taken) {
            return result;
        }
        const std::int64_t value = static_cast<std::int64_t>(static_cast<std::uint64_t>(WithSign(number)) +
                                                             static_cast<std::uint64_t>(last[kind][i]));
        item.values[i] = static_cast<std::int32_t>(value);
        if (item.values[i] != value) {
            return Result::Damaged;
        }
    }
    if (!CanBe(item)) {
        return Result::Damaged;
    }
    if (StoresDifferences(item.kind)) {
        last[kind] = item.values;
    }
    bytes = rest;
    return Result::Taken;
}

std::string RunHeadBytes(const std::string& version, const std::vector<RunFile>& files) {
    std::string bytes(magic);
    AppendNumber(bytes, formatVersion);
    AppendText(bytes, version);
    AppendNumber(bytes, files.size());
    for (const RunFile& file : files) {
        AppendText(bytes, file.name);
        AppendNumber(bytes, file.checksum);
    }
    return bytes;
}

std::string ReadRun(std::string_view bytes, RecordedRun& run) {
    const std::size_t size = bytes.size();
    run = {};
    std::string wrong = TakeHead(bytes, run);
    if (!wrong.empty()) {
        return wrong;
    }
    const std::string_view items = bytes;
    std::size_t wholeFrames = 0;  // bytes
    RunCoder coder;
    RunItem item;
    RunCoder::Result result = RunCoder::Result::Taken;
    while (!run.isWhole && (result = coder.Take(bytes, item)) == RunCoder::Result::Taken) {
        run.isWhole = item.kind == RunItemKind::EndOfRun;
        if (item.kind == RunItemKind::EndOfFrame) {
            run.frameCount++;
            wholeFrames = items.size() - bytes.size();
        }
    }
    if (result == RunCoder::Result::Damaged || (run.isWhole && !bytes.empty())) {
        return "damaged after frame " + std::to_string(run.frameCount) + ", at byte " +
               std::to_string(size - bytes.size());
    }
    run.items = items.substr(0, wholeFrames);
    return run.frameCount > 0 ? "" : "it holds no whole frame";
}

std::uint64_t ChecksumOf(std::string_view bytes) {
    std::uint64_t checksum = 0xCBF29CE484222325u;
    for (const char byte : bytes) {
        checksum = (checksum ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
    }
    return checksum;
}
