// A host without a display: it is told so, and lives. The first argument is what the text must hold.
#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/statements.h>

#include "hosts/hostprogram.h"

int main(int argc, char** argv) {
    using host::expect;
    expect(argc == 2, "a text");
    const host::Suite suite;
    for (int time = 0; time < 2; ++time) {
        const std::string told = host::failureOf([] { const orvenmod::clsBasicInfo items; });
        expect(told.rfind("没有可用的显示：", 0) == 0, "it is told that there is no display: " + told);
        expect(told.find(argv[1]) != std::string::npos, "and why: " + told);
    }
    expect(host::failureOf([&] { orvenmod::Statements(suite.connectionString()).open("select 1 as v"); }).empty(),
           "what needs no display works");
    return 0;
}
