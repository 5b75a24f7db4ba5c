#include "windows/decryption_password/decryption_password_texts.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

using namespace JobRunner;

TEST(DecryptionPasswordTexts, theFirstRequestHasTheGeneralHeader)
{
    for (const int mode : {0, 1, 7})
        EXPECT_EQ(decryptionHeader(mode, L""),
                  L"Please enter password or provide key file to decrypt selected files on your computer.");
}

TEST(DecryptionPasswordTexts, aNamedFileIsShortenedToFortyCharacters)
{
    const Fakes::FakePlatform platform;
    EXPECT_EQ(decryptionHeader(0, L"C:\\a.zel"), L"Provide Key for C:\\a.zel");
    const std::wstring header = decryptionHeader(1, L"C:\\" + std::wstring(60, L'd') + L"\\name.zel");
    EXPECT_TRUE(header.starts_with(L"Provide Key for C:\\ddd"));
    EXPECT_TRUE(header.ends_with(L"...\\name.zel"));
    EXPECT_EQ(header.size(), std::wstring(L"Provide Key for ").size() + 40);
}

TEST(DecryptionPasswordTexts, aDocumentHasItsOwnHeaderWhateverTheName)
{
    EXPECT_EQ(decryptionHeader(2, L"C:\\a.zel"),
              L"Please enter password to open the document in the associated application.");
}

TEST(DecryptionPasswordTexts, theSecondLineTellsWhatBecomesOfTheOriginals)
{
    EXPECT_EQ(decryptionOrigin(0), L"Keep original files (do not delete).");
    EXPECT_EQ(decryptionOrigin(1), L"Delete original files after decryption.");
    EXPECT_EQ(decryptionOrigin(2), L"Decrypt, Open, Encrypt again (automatically).");
}

TEST(DecryptionPasswordTexts, anUnknownModeBehavesAsTheFirst)
{
    for (const int mode : {3, -1})
    {
        EXPECT_EQ(decryptionOrigin(mode), decryptionOrigin(0));
        EXPECT_TRUE(decryptionCanIgnore(mode));
    }
}

TEST(DecryptionPasswordTexts, aDocumentCannotBeIgnored)
{
    EXPECT_TRUE(decryptionCanIgnore(0));
    EXPECT_TRUE(decryptionCanIgnore(1));
    EXPECT_FALSE(decryptionCanIgnore(2));
}

TEST(DecryptionPasswordTexts, anErrorIsAboutTheEditThatIsSeen)
{
    EXPECT_STREQ(decryptionErrorTitle(true), L"Your Password");
    EXPECT_STREQ(decryptionErrorTitle(false), L"Your Key File");
}
