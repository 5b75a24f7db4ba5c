#include "statistics_testing/installed_component.h"

#include "statistics/win32/registration.h"
#include "statistics_testing/modules_of_build.h"

#include <cstdlib>
#include <stdexcept>

namespace StatisticsTesting
{
namespace
{

using StatisticsModule::Users;

constexpr const wchar_t* ServerKey =
    L"Software\\Classes\\CLSID\\{1122E1A6-3AFE-4DBC-97EF-39F8E0691A52}\\InprocServer32";

/// The class as it is registered for these users; what was registered before comes back at the end.
class Registration
{
public:
    Registration(Users users, const std::wstring& file) : users_(users), former_(registered())
    {
        worked_ = SUCCEEDED(StatisticsModule::registerClass(users, file));
    }
    ~Registration()
    {
        if (former_.empty())
            StatisticsModule::unregisterClass(users_);
        else
            StatisticsModule::registerClass(users_, former_);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

    bool worked() const { return worked_; }

private:
    std::wstring registered() const
    {
        wchar_t file[1024] = {};
        DWORD size = sizeof(file) - sizeof(wchar_t);
        const HKEY root = users_ == Users::All ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        RegGetValueW(root, ServerKey, nullptr, RRF_RT_REG_SZ, nullptr, file, &size);
        return file;
    }

    const Users users_;
    const std::wstring former_;
    bool worked_ = false;
};

} // namespace

class InstalledComponent::Place
{
public:
    explicit Place(Component component)
        : user_(Users::This, moduleOf(component).wstring()), machine_(Users::All, moduleOf(component).wstring())
    {
        if (!user_.worked() && !machine_.worked())
            throw std::runtime_error("the component cannot be registered");
        const char* const fault = faultOf(component);
        ::_putenv_s(FaultVariable, fault ? fault : "");
    }
    ~Place() { ::_putenv_s(FaultVariable, ""); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

private:
    Registration user_;
    // Wine looks for classes in the machine's part of the registry alone. Where a test may not write there, the user's
    // part serves.
    Registration machine_;
};

InstalledComponent::InstalledComponent(Component component, const std::filesystem::path&)
    : place_(std::make_unique<Place>(component))
{
}

InstalledComponent::~InstalledComponent() = default;

} // namespace StatisticsTesting
