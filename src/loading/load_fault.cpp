#include "loading/load_fault.h"

#include "services/log.h"

std::string ReportFault(Log* log, const LoadFault& fault) {
    const std::string object = fault.object < 0 ? "" : "object \"" + fault.objectName + "\": ";
    std::string line = fault.path + ": " + object + fault.Sentence();
    Log::Write(log, line);
    return line;
}
