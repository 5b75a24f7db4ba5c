#include "zelplatform/job_file.h"

#include "platform/utf8.h"

#include <array>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace ZelPlatform
{
namespace
{

using nlohmann::json;

enum class Field
{
    None, ///< a field that this version does not know; its value is skipped
    Kind,
    Files,
    Algorithm,
    Destiny,
    ExtraText,
    Comment,
    Path,
    Mode,
    Method,
};

template <class Value, std::size_t Count>
Value find(const std::array<std::pair<std::string_view, Value>, Count>& table, std::string_view name, Value otherwise)
{
    for (const auto& [key, value] : table)
    {
        if (key == name)
            return value;
    }
    return otherwise;
}

Field fieldNamed(std::string_view name)
{
    static constexpr std::array<std::pair<std::string_view, Field>, 9> fields{{{"kind", Field::Kind},
                                                                               {"files", Field::Files},
                                                                               {"algorithm", Field::Algorithm},
                                                                               {"destiny", Field::Destiny},
                                                                               {"extraText", Field::ExtraText},
                                                                               {"comment", Field::Comment},
                                                                               {"path", Field::Path},
                                                                               {"mode", Field::Mode},
                                                                               {"method", Field::Method}}};
    return find(fields, name, Field::None);
}

JobKind kindNamed(std::string_view name)
{
    static constexpr std::array<std::pair<std::string_view, JobKind>, 5> kinds{{{"encrypt", JobKind::Encrypt},
                                                                                {"encrypt-sfx", JobKind::EncryptSfx},
                                                                                {"decrypt", JobKind::Decrypt},
                                                                                {"double-click", JobKind::DoubleClick},
                                                                                {"delete", JobKind::Delete}}};
    return find(kinds, name, JobKind::Unknown);
}

/// Takes the values as the parser meets them, so that a large or hostile file never becomes a tree in memory. Each
/// answer is true to go on, false to refuse the file.
class Reader : public json::json_sax_t
{
public:
    bool complete() const { return seen(Field::Kind) && seen(Field::Files); }
    JobDescription takeJob() { return std::move(job_); }

    bool null() override
    {
        if (skipping())
            return true;
        return depth_ == 1 && field_ == Field::Path;
    }
    bool boolean(bool) override { return skipping(); }
    bool number_float(double, const std::string&) override { return skipping(); }
    bool binary(json::binary_t&) override { return false; }

    bool number_integer(std::int64_t value) override
    {
        if (skipping())
            return true;
        return value >= 0 && number_unsigned(static_cast<std::uint64_t>(value));
    }

    bool number_unsigned(std::uint64_t value) override
    {
        if (skipping())
            return true;
        std::uint32_t* target = depth_ == 1 ? numberOf(field_) : nullptr;
        if (!target || value > std::numeric_limits<std::uint32_t>::max())
            return false;
        *target = static_cast<std::uint32_t>(value);
        return true;
    }

    bool string(std::string& value) override
    {
        if (skipping())
            return true;
        // The text goes on as a zero-terminated one, which would hide what stands behind a zero.
        if (depth_ == 0 || value.find('\0') != std::string::npos)
            return false;
        return inFiles_ ? addFile(value) : setText(value);
    }

    bool start_object(std::size_t) override
    {
        if (depth_ > 0 && !skipping())
            return false;
        return ++depth_ <= MaximumJobFileNesting;
    }

    bool end_object() override
    {
        --depth_;
        return true;
    }

    bool key(std::string& name) override
    {
        if (depth_ > 1)
            return true;
        field_ = fieldNamed(name);
        if (field_ == Field::None)
            return true;
        // Two answers to one question: nobody can tell which of them was meant.
        if (seen(field_))
            return false;
        seen_ |= bit(field_);
        return true;
    }

    bool start_array(std::size_t) override
    {
        if (!skipping())
        {
            if (depth_ != 1 || field_ != Field::Files)
                return false;
            inFiles_ = true;
        }
        return ++depth_ <= MaximumJobFileNesting;
    }

    bool end_array() override
    {
        --depth_;
        inFiles_ = false;
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    static unsigned bit(Field field) { return 1U << static_cast<unsigned>(field); }
    bool seen(Field field) const { return (seen_ & bit(field)) != 0; }
    bool skipping() const { return depth_ > 0 && field_ == Field::None; }

    std::uint32_t* numberOf(Field field)
    {
        switch (field)
        {
        case Field::Algorithm:
            return &job_.algorithm;
        case Field::Destiny:
            return &job_.destiny;
        case Field::Mode:
            return &job_.mode;
        case Field::Method:
            return &job_.method;
        default:
            return nullptr;
        }
    }

    bool addFile(const std::string& name)
    {
        if (name.empty())
            return false;
        job_.files.push_back(Platform::fromUtf8(name));
        return true;
    }

    bool setText(const std::string& value)
    {
        switch (field_)
        {
        case Field::Kind:
            job_.kind = kindNamed(value);
            return true;
        case Field::ExtraText:
            job_.extraText = Platform::fromUtf8(value);
            return true;
        case Field::Comment:
            job_.comment = Platform::fromUtf8(value);
            return true;
        case Field::Path:
            job_.path = Platform::fromUtf8(value);
            return true;
        default:
            return false;
        }
    }

    JobDescription job_;
    Field field_ = Field::None;
    unsigned seen_ = 0;
    int depth_ = 0;
    bool inFiles_ = false;
};

} // namespace

std::optional<JobDescription> parseJobFile(std::string_view text)
{
    // The parser would take a zero for the end of the text and hide what stands behind it.
    if (text.size() > MaximumJobFileBytes || text.find('\0') != std::string_view::npos)
        return std::nullopt;
    Reader reader;
    if (!json::sax_parse(text, &reader) || !reader.complete())
        return std::nullopt;
    return reader.takeJob();
}

} // namespace ZelPlatform
