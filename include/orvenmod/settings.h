// The per-user settings that a host shares with the component. Those that the component reads lie under the application
// "Orvencom":
//
//   section      key             meaning                                 where there is none
//   -----------  --------------  --------------------------------------  -------------------
//   SystemSetup  msgTitle        title of every message box              奥文软件
//   SystemSetup  intZeroNumber   decimal places of quantities            2
//   SystemSetup  gItemAllName    read, and used by nothing               货品
//   SystemSetup  gAppPath        folder of the suite                     empty
//   SystemSetup  intBillStock    set to 0 by each row taken into a bill  0
//   SystemLogin  IsAdmin         1 passes every right                    0
//   SystemLogin  gLoginUserId    the user                                0
//   SystemLogin  gLoginUserName  printed on reports                      empty
//   ShowStock    StockId         warehouse, 0 for all                    0
//   ShowStock    PerFKC          -1 only what is in stock                0
//
// Both values of ShowStock are set back to "0" when the window closes.
#pragma once

#include <string>

#include <orvenmod/export.h>

namespace orvenmod {

/// `fallback` where there is none.
ORVENMOD_API std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                                    const std::string& fallback = "");

/// Throws std::runtime_error where the store can't be written.
ORVENMOD_API void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                              const std::string& value);

/// Removes a key; without a key the section, and without a section all of the application.
ORVENMOD_API void DeleteSetting(const std::string& application, const std::string& section = "",
                                const std::string& key = "");

}  // namespace orvenmod
