#pragma once
// The SDK's settings (OdEdSettingsManager) kept in the host's settings store, group /Settings.
#include "OdEdSettingsManager.h"

namespace wxg {

class ConfigSettingsStore : public OdEdSettingsStore {
public:
    bool read(const OdString& name, OdTypedValue& value) override;
    void write(const OdString& name, const OdTypedValue& value) override;
    void remove(const OdString& name) override;
    std::vector<OdString> names() override;
    void flush() override;
};

}  // namespace wxg
