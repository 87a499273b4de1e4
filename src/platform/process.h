#pragma once

// The program's own file and fresh copies of it, and what every program does to its process first.

#include <string>
#include <vector>

namespace ostrova::platform {

/// Called before anything is opened: a standard stream that is closed gets a descriptor, kept
/// across exec, on which its use fails. Otherwise the next thing opened, a page of the cache
/// perhaps, would take its number and be written to.
void HoldStandardStreams();

/// Called first by every program: writing into a pipe that nobody reads any more, or beyond the
/// file size limit, is an error that the writer hears of and not the process's end.
void IgnoreFatalWriteSignals();

/// Called by programs that have nothing of the user's in memory: when the system has none left for
/// a C++ object, the process says so in one line that begins with `programName` (borrowed for ever)
/// and ends with status 2, at once and on whatever thread. Files are whole at every moment.
void EndWhenOutOfMemory(const char* programName);

/// Full path of the file that this process runs, as it was started; empty when the system can't
/// tell. When the file was replaced meanwhile, still the path, so that a new copy is the new file.
[[nodiscard]] std::string ProgramPath();

/// Starts `path` as a process of its own, with no arguments, and does not wait for it: detached
/// from this session, current folder and standard streams kept, no other descriptor inherited,
/// signals at their defaults, no zombie left. Nothing is said when it can't be started.
void StartDetached(const std::string& path);

/// Replaces this process by `path` with `arguments` (the program's name not among them). Returns
/// only when that failed.
void ReplaceProcess(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace ostrova::platform
