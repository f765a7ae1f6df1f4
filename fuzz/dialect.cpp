// The dialect: any text becomes a statement of either target or a failure with a number; and what the embedded target
// gets is one statement that its engine takes, however the text was written.
#include <sqlite3.h>

#include <memory>
#include <string>

#include "fuzz/fuzz.h"
#include "store/tsql/error.h"
#include "store/tsql/fakecatalog.h"
#include "store/tsql/messages.h"
#include "store/tsql/shape.h"
#include "store/tsql/translator.h"

namespace {

using namespace orvenmod::store;

template <typename Translate>
void refusedOrDone(Translate translate) {
    try {
        translate();
    } catch (const tsql::Error& error) {
        tsql::worded(tsql::Language::chinese, error);
        tsql::worded(tsql::Language::english, error);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tsql::FakeCatalog catalog;
    const std::string_view sql = orvenmod::fuzz::textOf(data, size);
    refusedOrDone([&] {
        tsql::Shape shape;
        shape.scan(sql);
    });
    refusedOrDone([&] { tsql::translateForSqlite(sql, catalog); });
    refusedOrDone([&] { tsql::translateForPostgres(sql, catalog); });
    refusedOrDone([&] { tsql::viewColumns(sql, catalog); });
    tsql::storedViewText(sql);
    return 0;
}
