#pragma once

// The header lines of an HTTP answer, as they come in one by one, those of redirections and of
// "100 Continue" before it included: which is the final answer, and whether its body can be taken.

#include <string>
#include <string_view>

namespace ostrova::platform {

class HttpHeaders {
public:
    /// Takes the next line, with its line end. True when it ends the headers of the final answer.
    bool Add(std::string_view line);

    [[nodiscard]] int Status() const { return status_; }
    /// Inside the headers of an answer, its status line included.
    [[nodiscard]] bool IsOpen() const { return isOpen_; }
    /// The headers of the final answer are complete; what follows is its body.
    [[nodiscard]] bool IsComplete() const { return isComplete_; }
    /// The body is compressed, although nobody asked for that: a body that is cut then looks whole.
    [[nodiscard]] bool IsEncoded() const { return isEncoded_; }
    [[nodiscard]] bool IsChunked() const { return isChunked_; }
    /// Two lengths were announced that differ: nobody knows where the body ends.
    [[nodiscard]] bool IsContradictory() const { return isContradictory_; }

private:
    void Begin(std::string_view statusLine);
    void AddField(std::string_view name, std::string_view value);
    [[nodiscard]] bool IsFinal() const;

    int status_ = 0;
    bool isOpen_ = false;
    bool isComplete_ = false;
    bool isEncoded_ = false;
    bool isChunked_ = false;
    bool isContradictory_ = false;
    std::string length_;
    bool hasLocation_ = false;
};

}  // namespace ostrova::platform
