#include <istream>

#include "cli/call.h"
#include "matching/match_key.h"
#include "util/code_page.h"
#include "util/format.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp KeyHelp = {
    .name = "key",
    .summary = "print the match keys of texts",
    .synopsis = "[--artist] [TEXT...]",
    .description =
        "Prints the match key of each TEXT, or of each line of standard input when no\n"
        "TEXT is given: the form in which titles and artists are compared, so that\n"
        "spellings which mean the same fall together. Texts are UTF-8. A blank text\n"
        "has no key: its line is empty.",
    .output = "{\"text\",\"key\"}: key is null when there is none",
    .exitStatus =
        "0  a text had a key\n"
        "1  none had\n"
        "2  trouble: a text that is not UTF-8, standard input that can't be read",
    .examples =
        "ostrova-cli key --artist 'The Beatles' 'Desiree featuring Jo-Jo'\n"
        "cut -f2 songs.tsv | ostrova-cli key --json"};

class KeyCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return KeyHelp; }

    void AddOptions(CLI::App& app, CommonOptions& /*common*/) override {
        app.add_flag("--artist", isArtist_, "The texts are artists; otherwise they are titles.");
        texts_ = AddTexts(app, "TEXT", values_, "A title or an artist.");
    }

    [[nodiscard]] bool Run(Session& session) override {
        if (texts_->count() == 0) return RunOnInput(session);
        for (const std::string& text : values_) {
            if (!session.TakesText(text)) return false;
        }
        bool found = false;
        for (const std::string& text : values_) found |= PrintKey(session, text);
        return found;
    }

private:
    bool RunOnInput(Session& session) {
        std::istream& in = *session.StandardStreams().in;
        bool found = false;
        std::string line;
        for (int number = 1; !session.ShouldStop() && std::getline(in, line); ++number) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            // Answered all the same: line n of the output belongs to line n of the input.
            if (!util::IsUtf8(line))
                session.Complain(util::Format("Line %d is not UTF-8.", number));
            found |= PrintKey(session, line);
            // Whoever asks line by line, a person or a program, is answered before the next line.
            if (in.rdbuf()->in_avail() <= 0) session.StandardStreams().out->flush();
        }
        if (in.bad()) session.Complain("Couldn't read standard input.");
        return found;
    }

    bool PrintKey(Session& session, const std::string& text) const {
        using matching::TextKind;
        const auto key = matching::MakeMatchKey(util::FromUtf8(text),
                                                isArtist_ ? TextKind::Artist : TextKind::Title);
        const std::string shown = util::ToUtf8(key.value_or(""));
        if (session.Out().IsText()) {
            session.Out().Line(shown);
        } else {
            session.Out().Put({{"text", text}, {"key", key ? FieldValue(shown) : nullptr}});
        }
        return key.has_value();
    }

    bool isArtist_ = false;
    std::vector<std::string> values_;
    CLI::Option* texts_ = nullptr;
};

}  // namespace

std::unique_ptr<Call> MakeKeyCall() {
    return std::make_unique<KeyCall>();
}

}  // namespace ostrova::cli
