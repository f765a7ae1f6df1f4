// Copies a whole suite from one database to another, of whatever stores: tables with their keys, checks, defaults and
// indexes, the rows, the numbers that identity columns give next, the views in their own words. All of it is one
// transaction at the target, which is kept only if both sides are the same in the end.
//
//   source held -> tables made -> rows read in parts and loaded -> indexes -> views -> rows of both sides compared ->
//   kept
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store {

/// The numbers of a copy's own failures.
inline constexpr int kTargetNotEmpty = 40111;
inline constexpr int kSidesDiffer = 40112;

struct CopyProgress {
    enum class Stage { copying, indexing, comparing };

    Stage stage = Stage::copying;
    std::string table;
    std::int64_t rows = 0;   ///< done in this stage
    std::int64_t total = 0;  ///< of this stage; indexes of `indexing`
};

/// Both may be empty. They must not use the connections.
struct CopyWatch {
    /// Called after each part of a table.
    std::function<void(const CopyProgress&)> progress;
    /// Asked about ten times a second; true ends the copy with CopyCancelled.
    std::function<bool()> cancelled;
};

class CopyCancelled : public std::runtime_error {
public:
    CopyCancelled() : std::runtime_error("cancelled") {}
};

/// A failure with the place that it concerns; "" for what it doesn't concern or what isn't known.
class CopyFailure : public Failure {
public:
    struct Place {
        std::string table = {};
        std::string column = {};
        std::string key = {};     ///< "fItemId=5"
        std::string object = {};  ///< of an index or view that could not be made
    };

    CopyFailure(const Failure& failure, Place place) : Failure(failure), place_(std::move(place)) {}

    const Place& place() const { return place_; }

private:
    Place place_;
};

struct CopiedTable {
    std::string name;
    std::int64_t rows = 0;
    std::uint64_t checksum = 0;
};

struct CopyReport {
    std::vector<CopiedTable> tables;
    std::vector<std::string> views;
    std::vector<std::string> leftOut;  ///< what the dialect can't declare
};

/// Throws CopyFailure, Failure, CopyCancelled; the target is then as it was.
CopyReport copySuite(Connection& source, Connection& target, const CopyWatch& watch = {});

}  // namespace orvenmod::store
