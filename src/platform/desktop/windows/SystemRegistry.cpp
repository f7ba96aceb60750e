#include <utility>

#include "platform/desktop/Registry.h"
#include "platform/process/windows/SystemHeaders.h"
#include "platform/process/windows/WideText.h"

namespace burnwick {

namespace {

HKEY HandleOf(RegistryRoot root) {
    return root == RegistryRoot::ClassesRoot ? HKEY_CLASSES_ROOT : HKEY_CURRENT_USER;
}

class OpenKey {
public:
    static OpenKey Existing(RegistryRoot root, const std::string& key) {
        OpenKey open;
        if (RegOpenKeyExW(HandleOf(root), WideText(key).c_str(), 0, KEY_READ, &open.Key_) != ERROR_SUCCESS) {
            open.Key_ = nullptr;
        }
        return open;
    }
    static OpenKey Made(RegistryRoot root, const std::string& key) {
        OpenKey open;
        if (RegCreateKeyExW(HandleOf(root), WideText(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_SET_VALUE, nullptr, &open.Key_, nullptr)
            != ERROR_SUCCESS) {
            open.Key_ = nullptr;
        }
        return open;
    }
    OpenKey(OpenKey&& other) noexcept : Key_(std::exchange(other.Key_, nullptr)) {}
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    OpenKey& operator=(OpenKey&&) = delete;
    ~OpenKey() {
        if (Key_ != nullptr) {
            RegCloseKey(Key_);
        }
    }

    HKEY Get() const { return Key_; }
    explicit operator bool() const { return Key_ != nullptr; }

private:
    OpenKey() = default;

    HKEY Key_ = nullptr;
};

// Another program may make the text longer between the two calls: then it is asked for again.
std::optional<std::string> TextIn(HKEY key, const std::wstring& name) {
    constexpr DWORD texts = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
    std::wstring text;
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        DWORD bytes = 0;
        if (RegGetValueW(key, nullptr, name.c_str(), texts, nullptr, nullptr, &bytes) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        text.resize(bytes / sizeof(wchar_t) + 1);
        bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegGetValueW(key, nullptr, name.c_str(), texts, nullptr, text.data(), &bytes);
    }
    // What follows the first end of a text is none of it.
    return status == ERROR_SUCCESS ? std::optional(NarrowText(text.c_str())) : std::nullopt;
}

class SystemsRegistry final : public Registry {
public:
    bool HasKey(RegistryRoot root, const std::string& key) const override {
        return static_cast<bool>(OpenKey::Existing(root, key));
    }

    std::optional<std::string> Text(RegistryRoot root, const std::string& key,
                                    const std::string& name) const override {
        const auto open = OpenKey::Existing(root, key);
        return open ? TextIn(open.Get(), WideText(name)) : std::nullopt;
    }

    bool StoreText(RegistryRoot root, const std::string& key, const std::string& name,
                   const std::string& text) override {
        const auto open = OpenKey::Made(root, key);
        const auto wide = WideText(text);
        const auto bytes = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
        return open
               && RegSetValueExW(open.Get(), WideText(name).c_str(), 0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(wide.c_str()), bytes)
                      == ERROR_SUCCESS;
    }

    void DeleteValue(RegistryRoot root, const std::string& key, const std::string& name) override {
        RegDeleteKeyValueW(HandleOf(root), WideText(key).c_str(), WideText(name).c_str());
    }

    bool IsEmpty(RegistryRoot root, const std::string& key) const override {
        const auto open = OpenKey::Existing(root, key);
        DWORD keys = 0;
        DWORD values = 0;
        return open
               && RegQueryInfoKeyW(open.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                   nullptr, nullptr, nullptr, nullptr)
                      == ERROR_SUCCESS
               && keys == 0 && values == 0;
    }

    void Delete(RegistryRoot root, const std::string& key) override {
        RegDeleteKeyW(HandleOf(root), WideText(key).c_str());
    }
};

}  // namespace

std::unique_ptr<Registry> SystemRegistry() {
    return std::make_unique<SystemsRegistry>();
}

}  // namespace burnwick
