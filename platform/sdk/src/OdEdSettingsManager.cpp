#include "OdEdSettingsManager.h"

#include <cstdlib>

#include "OdError.h"

OdEdSettingsManager& OdEdSettingsManager::instance() {
    static OdEdSettingsManager manager;
    return manager;
}

OdString OdEdSettingsManager::defaultSettingsPath() {
    const char* configDir = std::getenv("VL_CONFIG_DIR");
    if (configDir && *configDir) return OdString::fromUtf8(configDir) + L"/sdk-settings.txt";
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && *xdg) return OdString::fromUtf8(xdg) + L"/vantlib/sdk-settings.txt";
    const char* home = std::getenv("HOME");
    return OdString::fromUtf8(home && *home ? home : ".") + L"/.config/vantlib/sdk-settings.txt";
}

void OdEdSettingsManager::setStore(std::shared_ptr<OdEdSettingsStore> store) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_store = std::move(store);
}

std::shared_ptr<OdEdSettingsStore> OdEdSettingsManager::store() { return currentStore(); }

std::shared_ptr<OdEdSettingsStore> OdEdSettingsManager::currentStore() {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_store) m_store = std::make_shared<OdEdTextFileSettingsStore>(defaultSettingsPath());
    return m_store;
}

bool OdEdSettingsManager::has(const OdString& name) {
    OdTypedValue value;
    return currentStore()->read(name, value);
}

OdTypedValue OdEdSettingsManager::getValue(const OdString& name) {
    OdTypedValue value;
    if (!currentStore()->read(name, value)) return OdTypedValue();
    return value;
}

void OdEdSettingsManager::setValue(const OdString& name, const OdTypedValue& value) {
    if (name.isEmpty()) throw OdError(eInvalidInput, L"A setting needs a name");
    std::shared_ptr<OdEdSettingsStore> target = currentStore();
    if (value.isNone())
        target->remove(name);
    else
        target->write(name, value);
    target->flush();
}

void OdEdSettingsManager::remove(const OdString& name) {
    std::shared_ptr<OdEdSettingsStore> target = currentStore();
    target->remove(name);
    target->flush();
}

namespace {

// Typed reads fall back to the default for absent values and for values that do not convert.
template <class T, class Read>
T readOr(const OdTypedValue& value, T defaultValue, Read read) {
    if (value.isNone()) return defaultValue;
    try {
        return read(value);
    } catch (const OdError&) {
        return defaultValue;
    }
}

}  // namespace

bool OdEdSettingsManager::getBool(const OdString& name, bool defaultValue) {
    return readOr(getValue(name), defaultValue, [](const OdTypedValue& v) { return v.asBool(); });
}

int16_t OdEdSettingsManager::getShort(const OdString& name, int16_t defaultValue) {
    return readOr(getValue(name), defaultValue, [](const OdTypedValue& v) { return v.asShort(); });
}

int OdEdSettingsManager::getInt(const OdString& name, int defaultValue) {
    return readOr(getValue(name), defaultValue, [](const OdTypedValue& v) { return v.asInt(); });
}

double OdEdSettingsManager::getDouble(const OdString& name, double defaultValue) {
    return readOr(getValue(name), defaultValue, [](const OdTypedValue& v) { return v.asDouble(); });
}

OdString OdEdSettingsManager::getString(const OdString& name, const OdString& defaultValue) {
    return readOr(getValue(name), defaultValue, [](const OdTypedValue& v) { return v.asString(); });
}
