#pragma once

#include <optional>
#include <string>

#include "cli/session.h"
#include "playlists/download_run.h"

namespace ostrova::cli {

/// The argument WEEKEND, bound to `text`.
void AddWeekend(CLI::App& app, std::optional<std::string>& text);

/// The weekend that `text` names by any date in it, the one that is current now when there is no
/// text; nothing after a complaint.
[[nodiscard]] std::optional<playlists::Weekend> ChooseWeekend(
    Session& session, const std::optional<std::string>& text);

/// True when `weekend` is the one that is current now: what is told of it may still change, and is
/// fetched afresh.
[[nodiscard]] bool IsCurrentWeekend(Session& session, const playlists::Weekend& weekend);

/// Says why addresses were made without the year's index, as an engine's `indexTrouble` has it;
/// nothing when that is empty or the program was stopped.
void TellIndexTrouble(Session& session, const std::string& trouble);

/// Brings a weekend's playlists and guest into `state`: the one named, or the current one with the
/// start-up's fall-back of one week; the guest only if `state` wants it. False when there is
/// nothing to show: after a complaint, when none of its pages could be had or it has not begun, and
/// silently when the program was stopped.
[[nodiscard]] bool LoadWeekend(Session& session, const std::optional<std::string>& text,
                               playlists::WeekendState& state);

}  // namespace ostrova::cli
