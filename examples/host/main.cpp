// The sample suite: what a host of the component looks like.
#include <QApplication>
#include <exception>
#include <iostream>
#include <stdexcept>

#include <orvenmod/clsBasicInfo.h>

#include "options.h"
#include "suite.h"
#include "suitewindow.h"
#include "tour.h"
#include "upgradeoffer.h"

namespace {

int run(const orvenmod::sample::Options& options) {
    using namespace orvenmod::sample;
    const Suite suite(options.database, options.server);
    if (options.create) {
        suite.create(options.goods);
        return 0;
    }
    if (options.upgrade) {
        suite.upgrade();
        return 0;
    }
    // With the first object comes the component's QApplication, which the suite's own windows share.
    suite.logIn({});
    const orvenmod::clsBasicInfo component;
    // A tour has nobody who could answer.
    if (!options.tour.empty() && suite.age() == DatabaseAge::newer) throw std::runtime_error(kNewerDatabase);
    if (options.tour.empty() && !isReadyToOpen(suite)) return 1;
    suite.logIn(suite.users().at(0));
    SuiteWindow window(suite);
    if (!options.tour.empty()) return playTour(window, options.tour);
    window.show();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(orvenmod::sample::readOptions({argv + 1, argv + argc}));
    } catch (const std::invalid_argument& mistake) {
        std::cerr << mistake.what() << '\n' << orvenmod::sample::kUsage;
        return 2;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
