// All that a host includes, in the order to read it:
//
//   clsBasicInfo.h    items of one class: manage, pick one, pick for a bill
//   clsJCZL.h         dictionaries
//   clsHSXMManage.h   designer of classes and fields
//   settings.h        the per-user settings shared with the component
//   schema.h          creates the suite's tables in an empty database
//   statements.h      statements of the host's own on the suite's database
//   variant.h         the type of optional arguments
//   component.h       the classes by name, for hosts that load the component at run time
//   version.h         which version this is
//
// For hosts that link nothing of the component, and for other languages: create.h, orvenmod_c.h.
#pragma once

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>
#include <orvenmod/component.h>
#include <orvenmod/schema.h>
#include <orvenmod/settings.h>
#include <orvenmod/statements.h>
#include <orvenmod/variant.h>
#include <orvenmod/version.h>
