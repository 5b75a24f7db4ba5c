#include "vaultcore/container/rsa.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/oaep.h"
#include "vaultcore/crypto_library.h"

#include <new>
#include <utility>

namespace VaultCore
{
namespace
{

struct NumberCloser
{
    void operator()(gcry_mpi* number) const { gcry_mpi_release(number); }
};
using Number = std::unique_ptr<gcry_mpi, NumberCloser>;

struct ExpressionCloser
{
    void operator()(gcry_sexp* expression) const { gcry_sexp_release(expression); }
};
using Expression = std::unique_ptr<gcry_sexp, ExpressionCloser>;

struct SecretCloser
{
    void operator()(void* memory) const { gcry_free(memory); }
};

constexpr std::string_view Label = "vaultcore rsa";

/// A number in libgcrypt's own guarded memory, which is wiped when it is given back. What libgcrypt makes of it stays
/// there.
Number numberOf(ByteView bytes)
{
    const std::unique_ptr<void, SecretCloser> guarded(gcry_malloc_secure(bytes.size() + 1));
    if (guarded == nullptr)
        throw std::bad_alloc();
    std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(guarded.get()));
    gcry_mpi_t number = nullptr;
    checkCrypto(gcry_mpi_scan(&number, GCRYMPI_FMT_USG, guarded.get(), bytes.size(), nullptr));
    return Number(number);
}

Number numberOf(std::uint32_t value)
{
    return Number(gcry_mpi_set_ui(nullptr, value));
}

/// Fills `out` with the number, with zeros in front. It has to fit.
void store(gcry_mpi_t number, std::span<std::uint8_t> out)
{
    std::size_t size = 0;
    checkCrypto(gcry_mpi_print(GCRYMPI_FMT_USG, nullptr, 0, &size, number));
    checkCrypto(size > out.size() ? gcry_error(GPG_ERR_TOO_LARGE) : 0);
    checkCrypto(gcry_mpi_print(GCRYMPI_FMT_USG, out.last(size).data(), size, nullptr, number));
}

template <class... Arguments> Expression build(const char* format, Arguments... arguments)
{
    gcry_sexp_t expression = nullptr;
    checkCrypto(gcry_sexp_build(&expression, nullptr, format, arguments...));
    return Expression(expression);
}

Expression publicExpression(const RsaNumbers& numbers)
{
    return build("(public-key (rsa (n %M) (e %M)))", numberOf(numbers.modulus).get(), numberOf(numbers.exponent).get());
}

/// Null when the primes have no inverse of each other, so are none.
Expression privateExpression(const RsaNumbers& numbers)
{
    const Number modulus = numberOf(numbers.modulus);
    const Number exponent = numberOf(numbers.privateExponent.bytes());
    Number smaller = numberOf(numbers.prime1.bytes());
    Number larger = numberOf(numbers.prime2.bytes());
    // With the larger prime first libgcrypt calculates wrongly now and then.
    if (gcry_mpi_cmp(smaller.get(), larger.get()) > 0)
        std::swap(smaller, larger);
    const Number inverse(gcry_mpi_snew(static_cast<unsigned>(numbers.prime2.size() * 8)));
    if (gcry_mpi_cmp_ui(larger.get(), 1) <= 0 || gcry_mpi_invm(inverse.get(), smaller.get(), larger.get()) == 0)
        return nullptr;
    return build("(private-key (rsa (n %M) (e %M) (d %M) (p %M) (q %M) (u %M)))", modulus.get(),
                 numberOf(numbers.exponent).get(), exponent.get(), smaller.get(), larger.get(), inverse.get());
}

/// Is the private exponent the inverse of the public one, as seen by one of the primes?
bool fitsPrime(const RsaNumbers& numbers, ByteView prime)
{
    const Number below = numberOf(prime);
    if (gcry_mpi_cmp_ui(below.get(), 2) <= 0)
        return false;
    gcry_mpi_sub_ui(below.get(), below.get(), 1);
    const Number product(gcry_mpi_snew(static_cast<unsigned>(prime.size() * 8)));
    gcry_mpi_mulm(product.get(), numberOf(numbers.privateExponent.bytes()).get(), numberOf(numbers.exponent).get(),
                  below.get());
    return gcry_mpi_cmp_ui(product.get(), 1) == 0;
}

Number numberIn(const Expression& key, const char* name)
{
    const Expression found(gcry_sexp_find_token(key.get(), name, 0));
    Number number(found == nullptr ? nullptr : gcry_sexp_nth_mpi(found.get(), 1, GCRYMPI_FMT_USG));
    checkCrypto(number == nullptr ? gcry_error(GPG_ERR_NO_OBJ) : 0);
    return number;
}

SecureBytes secretIn(const Expression& key, const char* name, std::size_t size)
{
    SecureBytes bytes(size);
    store(numberIn(key, name).get(), bytes.bytes());
    return bytes;
}

} // namespace

bool isSoundRsaKey(const RsaNumbers& numbers)
{
    const std::size_t size = numbers.modulus.size();
    if (size != RsaSmallModulus && size != RsaLargeModulus)
        return false;
    // All bits of the size are used, and an even modulus is no product of two great primes.
    if (numbers.modulus.front() < 0x80 || numbers.modulus.back() % 2 == 0 || numbers.exponent != RsaExponent)
        return false;
    if (numbers.privateExponent.empty())
        return true;
    if (!prepareCryptoLibrary())
        return false;
    if (!fitsPrime(numbers, numbers.prime1.bytes()) || !fitsPrime(numbers, numbers.prime2.bytes()))
        return false;
    // This one compares the modulus with the product of the primes.
    const Expression key = privateExpression(numbers);
    return key != nullptr && gcry_pk_testkey(key.get()) == 0;
}

RsaNumbers generateRsaPair(std::size_t modulusSize)
{
    if (!prepareCryptoLibrary())
        checkCrypto(gcry_error(GPG_ERR_NOT_INITIALIZED));
    const Expression request = build("(genkey (rsa (nbits %u) (rsa-use-e %u)))", static_cast<unsigned>(modulusSize * 8),
                                     static_cast<unsigned>(RsaExponent));
    gcry_sexp_t made = nullptr;
    checkCrypto(gcry_pk_genkey(&made, request.get()));
    const Expression whole(made);
    const Expression key(gcry_sexp_find_token(made, "private-key", 0));
    checkCrypto(key == nullptr ? gcry_error(GPG_ERR_NO_OBJ) : 0);
    RsaNumbers numbers;
    numbers.modulus.resize(modulusSize);
    store(numberIn(key, "n").get(), numbers.modulus);
    numbers.exponent = RsaExponent;
    numbers.privateExponent = secretIn(key, "d", modulusSize);
    numbers.prime1 = secretIn(key, "p", modulusSize / 2);
    numbers.prime2 = secretIn(key, "q", modulusSize / 2);
    return numbers;
}

Bytes sealWithRsa(const RsaNumbers& numbers, const SecureBytes& secret)
{
    if (!prepareCryptoLibrary())
        checkCrypto(gcry_error(GPG_ERR_NOT_INITIALIZED));
    const Expression key = publicExpression(numbers);
    const SecureBytes block = padForRsa(secret, Label, numbers.modulus.size());
    const Expression data = build("(data (flags raw) (value %M))", numberOf(block.bytes()).get());
    gcry_sexp_t made = nullptr;
    checkCrypto(gcry_pk_encrypt(&made, data.get(), key.get()));
    const Expression result(made);
    Bytes sealed(numbers.modulus.size());
    store(numberIn(result, "a").get(), sealed);
    return sealed;
}

std::optional<SecureBytes> openWithRsa(const RsaNumbers& numbers, ByteView sealed)
{
    if (!prepareCryptoLibrary())
        checkCrypto(gcry_error(GPG_ERR_NOT_INITIALIZED));
    const Expression key = privateExpression(numbers);
    const Expression data = build("(enc-val (flags raw) (rsa (a %M)))", numberOf(sealed).get());
    gcry_sexp_t made = nullptr;
    if (gcry_pk_decrypt(&made, data.get(), key.get()) != 0)
        return std::nullopt;
    const Expression result(made);
    return unpadFromRsa(secretIn(result, "value", numbers.modulus.size()), Label);
}

} // namespace VaultCore
