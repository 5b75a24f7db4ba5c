#include "zelplatform/job_file.h"

#include "fuzz/reader.h"
#include "fuzz/whole_text.h"
#include "platform/utf8.h"

#include <algorithm>
#include <array>

namespace Fuzz
{
namespace
{

using ZelPlatform::JobDescription;
using ZelPlatform::JobKind;

bool isTextOrNone(const std::optional<std::wstring>& text)
{
    return !text || isWholeText(*text);
}

void checkTexts(const JobDescription& job)
{
    for (const std::wstring& file : job.files)
        expect(!file.empty() && isWholeText(file), "a name is a text and not empty");
    expect(isWholeText(job.extraText), "the extra text is one");
    expect(isTextOrNone(job.comment) && isTextOrNone(job.path), "comment and path are texts");
}

std::string quoted(const std::wstring& text)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string json = "\"";
    for (const char character : Platform::toUtf8(text))
    {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20)
            json += std::string("\\u00") + Digits[byte >> 4] + Digits[byte & 15];
        else if (character == '"' || character == '\\')
            json += std::string("\\") + character;
        else
            json += character;
    }
    return json + '"';
}

std::string kindOf(const JobDescription& job)
{
    constexpr std::array<const char*, 6> Names{"unheard-of", "encrypt",      "encrypt-sfx",
                                               "decrypt",    "double-click", "delete"};
    return Names[static_cast<std::size_t>(job.kind)];
}

/// The job written again, with every field.
std::string written(const JobDescription& job)
{
    std::string json = "{\"kind\": \"" + kindOf(job) + "\", \"files\": [";
    for (std::size_t index = 0; index < job.files.size(); ++index)
        json += (index == 0 ? "" : ", ") + quoted(job.files[index]);
    json += "], \"algorithm\": " + std::to_string(job.algorithm) + ", \"destiny\": " + std::to_string(job.destiny);
    json += ", \"mode\": " + std::to_string(job.mode) + ", \"method\": " + std::to_string(job.method);
    json += ", \"extraText\": " + quoted(job.extraText);
    if (job.comment)
        json += ", \"comment\": " + quoted(*job.comment);
    return json + ", \"path\": " + (job.path ? quoted(*job.path) : "null") + "}";
}

bool isSame(const JobDescription& left, const JobDescription& right)
{
    return left.kind == right.kind && left.files == right.files && left.algorithm == right.algorithm &&
           left.destiny == right.destiny && left.extraText == right.extraText && left.comment == right.comment &&
           left.path == right.path && left.mode == right.mode && left.method == right.method;
}

bool readJobFile(ByteView input)
{
    const std::string text = textOfBytes(input);
    const auto job = ZelPlatform::parseJobFile(text);
    if (!job)
        return false;
    checkTexts(*job);
    // Each name takes its quotation marks and a comma or bracket.
    expect(job->files.size() <= text.size() / 3, "no more names than there is room for");
    const auto again = ZelPlatform::parseJobFile(written(*job));
    expect(again && isSame(*job, *again), "a job that is written again is the same");
    return true;
}

std::vector<Bytes> jobFileSeeds()
{
    JobDescription job;
    std::vector<Bytes> seeds{bytesOfText("{\"kind\": \"delete\", \"files\": []}"),
                             bytesOfText("\xEF\xBB\xBF{\"later\": {\"a\": [1, -2.5e3, true, null, {}]}, \"files\": "
                                         "[\"\\u00e4\\ud83d\\udd11\"], \"kind\": \"decrypt\", \"path\": null}")};
    job.files = {L"C:\\Users\\me\\*.png", L"/home/me/\u00E4\u20AC.txt"};
    job.extraText = L"line\n\"two\"";
    for (const JobKind kind :
         {JobKind::Encrypt, JobKind::EncryptSfx, JobKind::Decrypt, JobKind::DoubleClick, JobKind::Delete})
    {
        job.kind = kind;
        job.algorithm = 0xFFFFFFFF;
        job.comment = L"comment";
        job.path = L"/tmp";
        seeds.push_back(bytesOfText(written(job)));
    }
    return seeds;
}

const Registered registered({"job_file", readJobFile, jobFileSeeds});

} // namespace
} // namespace Fuzz
