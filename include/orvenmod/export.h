// What the component's library shows to those who link or load it. All else in it is hidden.
#pragma once

#define ORVENMOD_API __attribute__((visibility("default")))
