// The per-user settings that a host shares with the component. Those that the component reads lie under the application
// "Orvencom":
//
//   SystemSetup   msgTitle       title of every message box           SystemLogin   IsAdmin         1 passes every
//   right
//                 intZeroNumber  decimal places of quantities                       gLoginUserId    the user
//                 gItemAllName                                                      gLoginUserName  printed on reports
//                 gAppPath       folder of the suite                ShowStock     StockId         warehouse, 0 for all
//                 intBillStock                                                      PerFKC          -1 only what is in
//                                                                                                   stock
//   Both values of ShowStock are set back to "0" when the window closes.
#pragma once

#include <string>

namespace orvenmod {

/// `fallback` where there is none.
std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback = "");

/// Throws std::runtime_error where the store can't be written.
void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value);

/// Removes a key; without a key the section, and without a section all of the application.
void DeleteSetting(const std::string& application, const std::string& section = "", const std::string& key = "");

}  // namespace orvenmod
