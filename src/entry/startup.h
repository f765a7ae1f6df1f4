// The component's start-up: picks toolkit, store and desktop services, once. A host or a test that called useServices
// before keeps its own.
#pragma once

#include "frame/services.h"

namespace orvenmod {

/// Chooses the services where nobody has, and titles the boxes of escaped failures.
void startUp();

/// Throws std::runtime_error where the toolkit in use can show no window any more.
void requireWindows();

/// The settings of the services in use, or the user's own where none are: needs no toolkit.
platform::Settings& sharedSettings();

/// The stores of the component, by connection string: the embedded one and servers. Needs no toolkit.
store::Store& componentStore();

}  // namespace orvenmod
