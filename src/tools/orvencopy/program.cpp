#include "tools/orvencopy/program.h"

#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

#include "store/copy/copy.h"
#include "tools/orvencopy/progressbar.h"

namespace orvenmod::tools {

namespace {

using nlohmann::ordered_json;

constexpr const char* kUsage = "usage: orvencopy FROM TO\n       orvencopy --help\n";

constexpr const char* kHelp =
    R"(NAME
  orvencopy - moves a suite from one store to another

SYNOPSIS
  orvencopy FROM TO

DESCRIPTION
  Copies the whole database that the connection string FROM names into the one that TO names, of whatever stores they
  are: all tables with their keys, checks, defaults and indexes, also those that somebody else made; the rows; the
  numbers that identity columns give next; the views in their own words. Then it reads both sides and compares counts
  and a checksum of every table.

  All of it is one transaction at the target. Where anything fails, where a side differs, or where it is cancelled
  (Ctrl-C), the target is left empty. A target that holds a table or a view already is refused.

  The embedded store as a source lets nobody write while it is copied. On a server nobody should work with the suite
  meanwhile; rows that come in between are noticed, and nothing is kept.

  What the dialect has no words for (triggers, procedures, indexes over expressions or parts of a table, foreign keys)
  isn't copied, but told.

OUTPUT
  A bar on standard error; on standard output a JSON line for each table, for each thing that isn't copied, and one for
  the whole; or one with "error", which names table, column, key and object as far as they are known.

EXIT STATUS
  0  copied, and both sides are the same      3  the target isn't empty
  1  failed                                   4  the sides are not the same
  2  called wrongly                         130  cancelled (143 by SIGTERM)

EXAMPLES
  orvencopy 'Provider=SQLite;Data Source=suite.db' \
            'Provider=PostgreSQL;Data Source=server;Initial Catalog=suite;User ID=suite;Password=word'
  orvencopy 'Provider=PostgreSQL;Data Source=server;Initial Catalog=suite;User ID=suite;Password=word' \
            'Provider=SQLite;Data Source=suite.db;Mode=Create'
)";

std::string dumped(const ordered_json& json) {
    constexpr int kOneLine = -1;
    constexpr bool kEscapeBeyondAscii = false;
    return json.dump(kOneLine, ' ', kEscapeBeyondAscii, ordered_json::error_handler_t::replace) + "\n";
}

std::string hexadecimal(std::uint64_t value) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text(16, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4U)
        *digit = kDigits[value & 0xFU];
    return text;
}

ordered_json errorOf(const store::Failure& failure, const store::CopyFailure::Place& place) {
    ordered_json error = {
        {"number", failure.number()}, {"kind", store::kindWord(failure.kind())}, {"text", failure.text()}};
    const auto add = [&error](const char* name, const std::string& value) {
        if (!value.empty()) error[name] = value;
    };
    add("table", place.table);
    add("column", place.column);
    add("key", place.key);
    add("object", place.object);
    return {{"error", std::move(error)}};
}

int codeOf(const store::Failure& failure) {
    if (failure.number() == store::kTargetNotEmpty) return exitcode::kTargetNotEmpty;
    return failure.number() == store::kSidesDiffer ? exitcode::kSidesDiffer : exitcode::kFailed;
}

void tell(const store::CopyReport& report, double seconds, std::ostream& output) {
    std::int64_t rows = 0;
    for (const store::CopiedTable& table : report.tables) {
        rows += table.rows;
        output << dumped(
            {{"table", table.name}, {"rows", table.rows}, {"checksum", hexadecimal(table.checksum)}, {"same", true}});
    }
    for (const std::string& thing : report.leftOut)
        output << dumped({{"leftOut", thing}});
    constexpr double kTenths = 10;
    output << dumped({{"tables", report.tables.size()},
                      {"views", report.views.size()},
                      {"rows", rows},
                      {"seconds", std::round(seconds * kTenths) / kTenths},
                      {"same", true}})
           << std::flush;
}

void copy(const std::string& from, const std::string& to, const CopySurroundings& surroundings, ProgressBar& bar) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const auto source = surroundings.stores.connect(from);
    const auto target = surroundings.stores.connect(to);
    const store::CopyReport report =
        store::copySuite(*source, *target,
                         {[&bar](const store::CopyProgress& progress) { bar.show(progress); }, surroundings.cancelled});
    bar.clear();
    tell(report, std::chrono::duration<double>(Clock::now() - start).count(), surroundings.output);
}

}  // namespace

int runCopyProgram(const std::vector<std::string>& arguments, const CopySurroundings& surroundings) {
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        surroundings.output << kHelp;
        return exitcode::kDone;
    }
    if (arguments.size() != 2) {
        surroundings.messages << kUsage;
        return exitcode::kUsage;
    }
    ProgressBar bar(surroundings.messages, surroundings.terminal);
    try {
        copy(arguments[0], arguments[1], surroundings, bar);
        return exitcode::kDone;
    } catch (const store::CopyFailure& failure) {
        bar.clear();
        surroundings.output << dumped(errorOf(failure, failure.place())) << std::flush;
        return codeOf(failure);
    } catch (const store::Failure& failure) {
        bar.clear();
        surroundings.output << dumped(errorOf(failure, {})) << std::flush;
        return codeOf(failure);
    } catch (const store::CopyCancelled&) {
        bar.clear();
        surroundings.messages << "cancelled; the target is left as it was\n" << std::flush;
        throw;
    }
}

}  // namespace orvenmod::tools
