#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/run_file.h"

// Recorded runs: what can be read can be written and read again, item by item.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RecordedRun run;
    if (!ReadRun({reinterpret_cast<const char*>(data), size}, run).empty()) {
        return 0;
    }
    std::string written = RunHeadBytes(run.version, run.files);
    std::string_view rest = run.items;
    RunCoder reader;
    RunCoder writer;
    for (RunItem item; reader.Take(rest, item) == RunCoder::Result::Taken;) {
        writer.Append(written, item);
    }
    RecordedRun again;
    const bool same = ReadRun(written, again).empty() && again.frameCount == run.frameCount && rest.empty();
    if (!same) {
        std::abort();
    }
    return 0;
}
