// What the programs of this folder share: a suite's database of their own, and a clerk in the component's windows. Each
// program is a host of another kind; it ends with 0 where all that it expected came, else with a text.
#pragma once

#include <QMainWindow>
#include <functional>
#include <string>

namespace host {

/// Ends the program with the text where it isn't so.
void expect(bool so, const std::string& text);

/// A folder that goes with the program; settings and database lie in it.
class Suite {
public:
    Suite();
    ~Suite();
    Suite(const Suite&) = delete;
    Suite& operator=(const Suite&) = delete;

    const std::string& folder() const { return folder_; }
    const std::string& connectionString() const { return connectionString_; }

private:
    std::string folder_;
    std::string connectionString_;
};

using Work = std::function<void(QMainWindow&)>;

/// The clerk works in the component's next window once it has loaded, and closes it where he left it open. Without a
/// QApplication yet he comes with it.
void whenNextWindowOpens(const Work& work);

/// How many windows he has worked in.
int windowsSeen();

/// Double clicks the first row of the list.
void pickFirst(QMainWindow& window);

/// The code that a picker of goods gives when the first row is picked.
std::string pickedCode(const Suite& suite);

/// The text of the failure with which the work ends; "" where it didn't fail.
std::string failureOf(const std::function<void()>& work);

}  // namespace host
