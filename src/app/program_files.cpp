#include "app/program_files.h"

#include <filesystem>
#include <system_error>

#include "platform/process.h"
#include "util/files.h"
#include "util/path.h"

namespace ostrova::app {
namespace {

constexpr const char* FrontDoorProgram = "ostrova";

}  // namespace

std::string ProgramFolder() {
    const std::string program = platform::ProgramPath();
    if (program.empty()) return util::JoinPath(OSTROVA_CONFIGURED_BINDIR, "");
    return std::string(util::FolderPart(program));
}

std::string FrontDoorPath() {
    const std::string folder = ProgramFolder();
    std::string path = folder + FrontDoorProgram;
    if (util::PathExists(path)) return path;
    path = util::JoinPath(folder + OSTROVA_BINDIR, FrontDoorProgram);
    std::error_code failed;  // then the path stays as it is, which works as well
    const std::string plain = std::filesystem::canonical(path, failed).string();
    return failed ? path : plain;
}

}  // namespace ostrova::app
