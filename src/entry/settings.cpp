#include <orvenmod/settings.h>

#include "entry/startup.h"

namespace orvenmod {

std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback) {
    return sharedSettings().get(application, section, key, fallback);
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value) {
    sharedSettings().save(application, section, key, value);
}

void DeleteSetting(const std::string& application, const std::string& section, const std::string& key) {
    sharedSettings().remove(application, section, key);
}

}  // namespace orvenmod
