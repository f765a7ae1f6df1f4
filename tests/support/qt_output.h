// The toolkit's own dialogs (print preview, print), and what came out of them.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

namespace orvenmod::test {

/// Runs `open`, plays the steps on the dialog of that name as soon as it shows, and closes it where it still shows.
/// Fails the test where it doesn't come.
void onDialog(const char* name, const std::function<void()>& open, const std::function<void(QDialog&)>& steps);

/// Triggers one of the dialog's actions, which must be enabled.
void pressAction(QDialog& dialog, const char* action);

/// A PDF's text, laid out as on its pages, read back with pdftotext. A form feed ends a page; letters of full width
/// (：) come as the plain ones (:).
std::string pdfText(const std::string& file);

}  // namespace orvenmod::test
