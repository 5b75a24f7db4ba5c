#pragma once

#include <string>

namespace Halden::ZEL::Telemetry
{

/// What the reports say of the product.
class IProductInformation
{
public:
    virtual ~IProductInformation() = default;
    /// Major and minor version.
    virtual std::wstring GetVersion() = 0;
};

class ProductInformation final : public IProductInformation
{
public:
    std::wstring GetVersion() override { return L"6.13"; }
};

} // namespace Halden::ZEL::Telemetry
