#pragma once

// A call of `ostrova-cli`: its page of help, its options, and what it does.

#include <CLI/App.hpp>
#include <memory>
#include <vector>

#include "cli/options.h"
#include "cli/session.h"

namespace ostrova::cli {

/// The texts of a call's page of help, as they are printed, lines broken.
struct CallHelp {
    const char* name;
    const char* summary;   // half a line
    const char* synopsis;  // what follows the name
    const char* description;
    const char* output;  // of --json
    const char* exitStatus;
    const char* examples;
};

class Call {
public:
    virtual ~Call() = default;

    [[nodiscard]] virtual const CallHelp& Help() const = 0;

    /// Adds the call's own options, bound to its fields.
    virtual void AddOptions(CLI::App& app, CommonOptions& common) = 0;

    /// Does it. True when something was found; trouble is told to the session.
    [[nodiscard]] virtual bool Run(Session& session) = 0;
};

[[nodiscard]] std::unique_ptr<Call> MakeKeyCall();
[[nodiscard]] std::unique_ptr<Call> MakeParseCall();
[[nodiscard]] std::unique_ptr<Call> MakeMatchCall();
[[nodiscard]] std::unique_ptr<Call> MakeWeekendCall();
[[nodiscard]] std::unique_ptr<Call> MakeGuestCall();
[[nodiscard]] std::unique_ptr<Call> MakeResultsCall();
[[nodiscard]] std::unique_ptr<Call> MakeFetchCall();
[[nodiscard]] std::unique_ptr<Call> MakeSearchCall();

/// All of them, in the order in which the help lists them.
[[nodiscard]] std::vector<std::unique_ptr<Call>> MakeCalls();

}  // namespace ostrova::cli
