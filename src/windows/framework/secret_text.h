#pragma once

#include <string>
#include <utility>

namespace JobRunner
{

/// Overwrites the characters, so that they do not stay behind in freed memory, and empties the text.
inline void wipeText(std::wstring& text)
{
    volatile wchar_t* const characters = text.data();
    for (std::size_t i = 0; i < text.size(); ++i)
        characters[i] = 0;
    text.clear();
}

/// Holds a secret and wipes it at its end and before it takes another.
class SecretText
{
public:
    SecretText() = default;
    explicit SecretText(std::wstring&& text) { take(std::move(text)); }
    ~SecretText() { wipeText(text_); }
    SecretText(const SecretText&) = delete;
    SecretText& operator=(const SecretText&) = delete;

    /// Copies the text and wipes the original: moving it would leave a short one behind.
    void take(std::wstring&& text)
    {
        wipeText(text_);
        text_.assign(text);
        wipeText(text);
    }

    const std::wstring& text() const { return text_; }
    bool empty() const { return text_.empty(); }
    bool operator==(const SecretText& other) const { return text_ == other.text_; }

private:
    std::wstring text_;
};

} // namespace JobRunner
