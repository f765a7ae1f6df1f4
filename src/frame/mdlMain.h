// The gateway: connection, right check, settings and the ini file.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <string>

#include "store/connection.h"

namespace orvenmod {

/// The application name of the settings that the component shares with the suite.
inline constexpr const char* kSettingsApplication = "Orvencom";

/// Reuses gConn as it stands, else opens one by gConnStr. Never false: a store that can't be opened is a failure, so no
/// caller tests it.
bool openDB();

/// Closes and drops gConn if there is one.
void closeDB() noexcept;

/// The trap at the end of a database routine: the connection is closed on every way out; a failure is shown in the
/// critical box and gives False, else the routine's own result holds.
bool trapped(const std::function<bool()>& routine);

/// As trapped, with the failure shown in a box of the caller's choice.
bool trapped(const std::function<bool()>& routine, void (*showFailure)(const std::string&));

/// As trapped, for a routine that begins and commits a transaction: a failure is rolled back after it was shown. Where
/// none was begun yet the rollback fails in its turn; that second failure goes to the caller and leaves the store open.
bool trappedTransaction(const std::function<bool()>& routine);

/// Undoes the transaction of gConn. A failure where none is open, or no connection is.
void rollbackTrans();

/// True where gIsAdmin is 1 or the logged-in user has the right. Shows the refusal itself.
bool isHaveRight(const std::string& strRight);

/// A value of the ini file, at most 144 characters long; an absent or empty one is written with the default.
std::string GetIniS(const std::string& strSection, const std::string& strKey, const std::string& strDefault);
void SetIniS(const std::string& strSection, const std::string& strKey, const std::string& strValue);

/// The path of the ini file.
std::string AppProfileName();

/// Boxes titled gMsgTitle.
void showWarning(const std::string& text);
/// With a further button; true where that was pressed.
bool showWarningOffering(const std::string& text, const std::string& further);
void showInformation(const std::string& text);
void showCritical(const std::string& text);
void showCritical(const std::exception& failure);
/// Yes or No.
bool askQuestion(const std::string& text);

/// A setting that the suite shares, as text; `fallback` where there is none.
std::string setting(const std::string& section, const std::string& key, const std::string& fallback);
/// As a number. Throws a ConversionFailure that names the setting where it is none.
std::int16_t settingInt16(const std::string& section, const std::string& key, const std::string& fallback);
std::int32_t settingInt32(const std::string& section, const std::string& key, const std::string& fallback);
/// The failure's text with the setting that caused it.
std::string blameSetting(const std::string& text, const std::string& key, const std::string& value);
void saveSetting(const std::string& section, const std::string& key, const std::string& value);

}  // namespace orvenmod
