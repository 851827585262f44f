#pragma once
// The host's settings: typed values by name that persist between sessions. The backing store
// is pluggable: the host installs its own; without one the values persist in a text file.
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "OdTypedValue.h"

class OdEdSettingsStore {
public:
    virtual ~OdEdSettingsStore() = default;
    // False when the store has no value of that name.
    virtual bool read(const OdString& name, OdTypedValue& value) = 0;
    virtual void write(const OdString& name, const OdTypedValue& value) = 0;
    virtual void remove(const OdString& name) = 0;
    virtual std::vector<OdString> names() = 0;
    // Makes the written values durable.
    virtual void flush() {}
};

// Keeps the values in a text file, one "name<TAB>type:value" line each (tabs, newlines and
// backslashes escaped). The file is rewritten through a temporary file and a rename, so an
// interrupted write leaves the previous file. Lines that cannot be read are kept as they are.
class OdEdTextFileSettingsStore : public OdEdSettingsStore {
public:
    // Reads the file when it exists. Throws OdError(eFileAccessErr) when it exists but
    // cannot be read.
    explicit OdEdTextFileSettingsStore(const OdString& path);
    ~OdEdTextFileSettingsStore() override;

    bool read(const OdString& name, OdTypedValue& value) override;
    void write(const OdString& name, const OdTypedValue& value) override;
    void remove(const OdString& name) override;
    std::vector<OdString> names() override;
    // Throws OdError(eFileAccessErr) when the file cannot be written.
    void flush() override;

    const OdString& path() const { return m_path; }

private:
    OdString m_path;
    std::mutex m_mutex;
    std::map<OdString, OdTypedValue> m_values;
    std::vector<OdString> m_unreadableLines;
    bool m_dirty = false;
};

class OdEdSettingsManager {
public:
    // The process-wide manager. Until a store is installed it uses a text file store at
    // $VL_CONFIG_DIR/sdk-settings.txt, else $XDG_CONFIG_HOME/vantlib/sdk-settings.txt, else
    // ~/.config/vantlib/sdk-settings.txt.
    static OdEdSettingsManager& instance();
    static OdEdSettingsManager* get() { return &instance(); }
    static OdString defaultSettingsPath();

    OdEdSettingsManager() = default;
    explicit OdEdSettingsManager(std::shared_ptr<OdEdSettingsStore> store) : m_store(std::move(store)) {}

    void setStore(std::shared_ptr<OdEdSettingsStore> store);
    std::shared_ptr<OdEdSettingsStore> store();

    bool has(const OdString& name);
    // The stored value; kNone when absent.
    OdTypedValue getValue(const OdString& name);
    // Writes and flushes; an empty name throws OdError(eInvalidInput), a kNone value removes.
    void setValue(const OdString& name, const OdTypedValue& value);
    void remove(const OdString& name);

    // Typed reads return the default when the value is absent or of a kind that does not
    // convert (text for a number, a fraction for an integer).
    bool getBool(const OdString& name, bool defaultValue = false);
    int16_t getShort(const OdString& name, int16_t defaultValue = 0);
    int getInt(const OdString& name, int defaultValue = 0);
    double getDouble(const OdString& name, double defaultValue = 0.0);
    OdString getString(const OdString& name, const OdString& defaultValue = OdString());
    void setBool(const OdString& name, bool value) { setValue(name, OdTypedValue(value)); }
    void setShort(const OdString& name, int16_t value) { setValue(name, OdTypedValue(value)); }
    void setInt(const OdString& name, int value) { setValue(name, OdTypedValue(value)); }
    void setDouble(const OdString& name, double value) { setValue(name, OdTypedValue(value)); }
    void setString(const OdString& name, const OdString& value) { setValue(name, OdTypedValue(value)); }

private:
    std::shared_ptr<OdEdSettingsStore> currentStore();

    std::mutex m_mutex;
    std::shared_ptr<OdEdSettingsStore> m_store;
};
