#include "oracle/order.h"

#include "oracle/sealed.h"

namespace Faults
{
namespace
{

constexpr std::size_t ManyPieces = 300'000;

std::string manyBytes(std::size_t count)
{
    std::string bytes(count, '\0');
    std::uint32_t state = 7;
    for (char& byte : bytes)
    {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

/// What the user has, and something beside it that no job is about.
const Files& plain()
{
    static const Files files{{"large.bin", manyBytes(ManyPieces)}, {"tree/empty.txt", ""},
                             {"tree/five.txt", "sixty words"},     {"tree/four.txt", manyBytes(5'000)},
                             {"tree/one.txt", "the first one"},    {"tree/three.txt", std::string(300, '3')},
                             {"tree/two.txt", "another one"}};
    return files;
}

const Files Bystanders{{"beside.txt", "not in the list"}};

Order orderOf(Kind kind, Fate fate)
{
    Order order;
    order.kind = kind;
    order.fate = fate;
    order.before = Bystanders;
    return order;
}

Order overPlainFiles(Kind kind, Fate fate)
{
    Order order = orderOf(kind, fate);
    order.before.insert(plain().begin(), plain().end());
    for (const auto& [path, content] : plain())
        order.entries.push_back(path);
    return order;
}

} // namespace

Order encryption(Fate fate)
{
    Order order = overPlainFiles(Kind::Encrypt, fate);
    for (const auto& [path, content] : plain())
        order.works.push_back({path, {{path + ".zel", content, {}}}});
    return order;
}

Order packing(Fate fate)
{
    Order order = overPlainFiles(Kind::Pack, fate);
    for (const auto& [path, content] : plain())
        order.works.push_back({path, {{"large.bin.exe", content, nameOf(path)}}});
    return order;
}

Order decryption(Fate fate)
{
    Order order = orderOf(Kind::Decrypt, fate);
    for (const auto& [path, content] : plain())
    {
        order.before[path + ".zel"] = sealed(nameOf(path), content);
        order.works.push_back({path + ".zel", {{path, content, {}}}});
    }
    order.entries = {"large.bin.zel", "tree"};
    return order;
}

Order unpacking(Fate fate, const std::string& package)
{
    Order order = orderOf(Kind::Decrypt, fate);
    order.before["large.bin.exe"] = package;
    Work work{"large.bin.exe", {}};
    for (const auto& [path, content] : plain())
        work.results.push_back({path, content, {}});
    order.works = {work};
    order.entries = {"large.bin.exe"};
    return order;
}

Order removal(Fate fate)
{
    Order order = overPlainFiles(Kind::Remove, fate);
    order.entries = {"large.bin", "tree"};
    for (const auto& [path, content] : plain())
        order.works.push_back({path, {}});
    return order;
}

} // namespace Faults
