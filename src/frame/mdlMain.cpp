#include "frame/mdlMain.h"

#include <exception>
#include <stdexcept>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "platform/failuretext.h"

namespace orvenmod {

namespace {

constexpr std::size_t kIniBuffer = 144;  // characters

template <class Number>
Number settingNumber(const std::string& section, const std::string& key, const std::string& fallback,
                     Number (*convert)(std::string_view)) {
    const std::string value = setting(section, key, fallback);
    try {
        return convert(value);
    } catch (const ConversionFailure& failure) {
        throw ConversionFailure(failure.number(), blameSetting(failure.what(), key, value));
    }
}

// The first characters of a UTF-8 text, up to the first NUL.
std::string leadingCharacters(const std::string& text, std::size_t limit) {
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsCharacter = (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
        if (text[at] == '\0' || (startsCharacter && ++characters > limit)) return text.substr(0, at);
    }
    return text;
}

}  // namespace

bool openDB() {
    AppState& state = appState();
    if (state.gConn) return true;
    auto connection = services().store.connect(state.gConnStr);
    connection->setProgress([] { services().toolkit.paintPending(); });
    state.gConn = std::move(connection);
    return true;
}

void closeDB() noexcept {
    AppState& state = appState();
    if (!state.gConn) return;
    state.gConn->close();
    state.gConn.reset();
}

bool trapped(const std::function<bool()>& routine) { return trapped(routine, showCritical); }

bool trapped(const std::function<bool()>& routine, void (*showFailure)(const std::string&)) {
    bool done = false;
    try {
        done = routine();
    } catch (const std::exception& failure) {
        showFailure(platform::failureText(failure));
    }
    closeDB();
    return done;
}

bool trappedTransaction(const std::function<bool()>& routine) {
    const auto showAndUndo = [](const std::string& failure) {
        showCritical(failure);
        if (appState().gConn) rollbackTrans();
    };
    return trapped(routine, showAndUndo);
}

void rollbackTrans() {
    if (!appState().gConn) throw std::runtime_error("对象变量或 With 块变量未设置");
    appState().gConn->rollbackTrans();
}

bool isHaveRight(const std::string& strRight) {
    const AppState& state = appState();
    if (state.gIsAdmin == 1) return true;
    try {
        const std::string sql =
            "select fuserid from tblUserPrivillenge  where fuserid=" + std::to_string(state.gLoginUserId) +
            "  and fNumber='" + strRight + "'";
        openDB();
        const bool granted = !openRows(sql).eof();
        if (!granted) showWarning("您无此权限，请与系统管理员联系！");
        closeDB();
        return granted;
    } catch (const std::exception& failure) {
        // The connection stays open for the next openDB.
        showCritical(failure);
        return false;
    }
}

std::string GetIniS(const std::string& strSection, const std::string& strKey, const std::string& strDefault) {
    const std::string path = platform::nativePath(AppProfileName());
    const std::string value = services().iniFiles.read(path, strSection, strKey);
    if (!value.empty()) return leadingCharacters(value, kIniBuffer);
    services().iniFiles.write(path, strSection, strKey, strDefault);
    return strDefault;
}

void SetIniS(const std::string& strSection, const std::string& strKey, const std::string& strValue) {
    services().iniFiles.write(platform::nativePath(AppProfileName()), strSection, strKey, strValue);
}

std::string AppProfileName() { return appState().gIniPath; }

void showWarning(const std::string& text) {
    services().toolkit.message(platform::MessageKind::warning, text, appState().gMsgTitle);
}

bool showWarningOffering(const std::string& text, const std::string& further) {
    return services().toolkit.warnOffering(text, appState().gMsgTitle, further);
}

void showInformation(const std::string& text) {
    services().toolkit.message(platform::MessageKind::information, text, appState().gMsgTitle);
}

void showCritical(const std::string& text) {
    services().toolkit.message(platform::MessageKind::critical, text, appState().gMsgTitle);
}

void showCritical(const std::exception& failure) { showCritical(platform::failureText(failure)); }

bool askQuestion(const std::string& text) {
    return services().toolkit.message(platform::MessageKind::question, text, appState().gMsgTitle) ==
           platform::Answer::yes;
}

std::string setting(const std::string& section, const std::string& key, const std::string& fallback) {
    return services().settings.get(kSettingsApplication, section, key, fallback);
}

std::int16_t settingInt16(const std::string& section, const std::string& key, const std::string& fallback) {
    return settingNumber<std::int16_t>(section, key, fallback, toInt16);
}

std::int32_t settingInt32(const std::string& section, const std::string& key, const std::string& fallback) {
    return settingNumber<std::int32_t>(section, key, fallback, toInt32);
}

std::string blameSetting(const std::string& text, const std::string& key, const std::string& value) {
    return text + "：设置 " + key + " 的值为“" + value + "”";
}

void saveSetting(const std::string& section, const std::string& key, const std::string& value) {
    services().settings.save(kSettingsApplication, section, key, value);
}

}  // namespace orvenmod
