#include "fakes/fake_documents.h"

#include <utility>

namespace Fakes
{

FakeDocument::FakeDocument(CallLog& log, JobAnswers answers)
    : log_(log), answers_(std::move(answers)), files_(log, false)
{
    for (const std::wstring& file : answers_.files)
        files_.Add(file.c_str());
}

void FakeDocument::Release()
{
    log(L"Release");
    delete this;
}

VaultCore::IFileList* FakeDocument::GetFileList()
{
    log(L"GetFileList");
    return &files_;
}

bool FakeDocument::IsDecryption()
{
    log(L"IsDecryption");
    return answers_.decryption;
}

bool FakeDocument::IsDoubleClickDecryption()
{
    log(L"IsDoubleClickDecryption");
    return answers_.doubleClickDecryption;
}

bool FakeDocument::IsEncryption()
{
    log(L"IsEncryption");
    return answers_.encryption;
}

bool FakeDocument::IsSfxEncryption()
{
    log(L"IsSfxEncryption");
    return answers_.sfxEncryption;
}

bool FakeDocument::IsWipe()
{
    log(L"IsWipe");
    return answers_.wipe;
}

std::uint32_t FakeDocument::GetAlgorithm()
{
    log(L"GetAlgorithm");
    return answers_.algorithm;
}

std::uint32_t FakeDocument::GetDestiny()
{
    log(L"GetDestiny");
    return answers_.destiny;
}

const wchar_t* FakeDocument::GetExtraText()
{
    log(L"GetExtraText");
    return answers_.extraText.c_str();
}

std::wstring FakeDocument::GetSfxComment()
{
    log(L"GetSfxComment");
    return answers_.sfxComment;
}

const wchar_t* FakeDocument::GetDecryptionPath()
{
    log(L"GetDecryptionPath");
    return answers_.decryptionPath ? answers_.decryptionPath->c_str() : nullptr;
}

std::uint32_t FakeDocument::GetDecryptionMode()
{
    log(L"GetDecryptionMode");
    return answers_.decryptionMode;
}

std::uint32_t FakeDocument::GetDeletionMethod()
{
    log(L"GetDeletionMethod");
    return answers_.deletionMethod;
}

} // namespace Fakes
