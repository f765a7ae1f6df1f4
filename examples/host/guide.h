// The tour's guide: opens the component through the suite's window and plays steps on the windows that come.
#pragma once

#include <QPointer>
#include <QTimer>
#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "suitewindow.h"
#include "visitor.h"

namespace orvenmod::sample {

class Guide {
public:
    using Steps = std::function<void(Visitor&)>;

    enum User { kAdministrator, kAccountant, kJunior, kStorekeeper };

    Guide(SuiteWindow& suite, Album& album);

    /// Logs in, has `open` open a window, and plays the steps in it. Throws what a step failed with.
    void play(User user, const std::function<void()>& open, const std::string& window, Steps steps);
    /// Likewise with the list of items.
    void play(User user, const Request& request, Steps steps);
    /// The steps for a window that opens from within the next steps.
    void within(const std::string& window, Steps steps) { steps_.emplace_back(window, std::move(steps)); }

    void pictureSuite(const std::string& name, const std::string& caption);
    SuiteWindow& suite() { return suite_; }

private:
    void lookAgain();
    void look();
    void visit(QWidget& window);
    void awaitLeaving();

    SuiteWindow& suite_;
    Album& album_;
    QTimer timer_;
    std::vector<QPointer<QWidget>> visited_;  ///< those that are open still
    QPointer<QWidget> leaving_;               ///< one that must go by itself
    int waited_ = 0;
    std::vector<std::pair<std::string, Steps>> steps_;
    std::exception_ptr failure_;
};

}  // namespace orvenmod::sample
