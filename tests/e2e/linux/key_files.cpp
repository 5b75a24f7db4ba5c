#include "linux/key_files.h"

#include <stdexcept>

#include "linux/terminal.h"

namespace EndToEnd
{
namespace
{

/// For a program that a sanitizer watches: where libgcrypt keeps the state of its noise source, made with an RSA key,
/// the checker of leaks does not look.
void makeKeys(const std::vector<std::string>& arguments, const Path& leftOut)
{
    std::vector<std::string> command{"/usr/bin/env",
                                     "LSAN_OPTIONS=print_suppressions=0:suppressions=" + leftOut.string(),
                                     programUnderTest().parent_path() / "make_key"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    if (Terminal maker(command); maker.exitCode(std::chrono::minutes(2)) != 0)
        throw std::runtime_error("make_key has made no key: " + maker.shown());
}

} // namespace

const KeyFiles& KeyFiles::shared()
{
    static const KeyFiles files;
    return files;
}

KeyFiles::KeyFiles()
{
    const Path leftOut = folder_.addFile("leaks", "leak:libgcrypt.so\n");
    makeKeys({"symmetric", symmetric}, leftOut);
    makeKeys({"symmetric", otherSymmetric}, leftOut);
    makeKeys({"rsa", publicRsa, privateRsa, pair}, leftOut);
}

} // namespace EndToEnd
