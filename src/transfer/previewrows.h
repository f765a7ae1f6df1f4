// What the lists of an import show: rows of the session, put into words when they are asked for.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/listgrid.h"
#include "transfer/importsession.h"

namespace orvenmod {

/// A list's columns as their heading tells them.
struct ListColumn {
    std::string title;
    int width;  ///< twips
};

/// Binds the rows and names the columns.
void showRows(platform::ListGrid& grid, std::shared_ptr<const platform::RowSource> rows,
              const std::vector<ListColumn>& columns);

/// Rows whose texts are made on demand and then kept.
class WordedRows : public platform::RowSource {
public:
    WordedRows(std::size_t rows, int columns) : rows_(rows), columns_(columns) {}

    std::size_t rowCount() const override { return rows_; }
    int columnCount() const override { return columns_; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override;

protected:
    virtual std::vector<std::string> texts(std::size_t row) const = 0;

private:
    std::size_t rows_;
    int columns_;
    mutable std::unordered_map<std::size_t, std::vector<std::string>> made_;
};

/// The checked rows: number in the file, state, reasons, the fields that the file has. What is wrong with a value
/// stands behind it.
class CheckedRows final : public WordedRows {
public:
    CheckedRows(const ImportSession& session, std::vector<std::size_t> places);
    std::size_t place(std::size_t row) const { return places_[row]; }
    static std::vector<ListColumn> columns(const ImportSession& session);

private:
    std::vector<std::string> texts(std::size_t row) const override;

    const ImportSession& session_;
    std::vector<std::size_t> places_;
};

/// What became of the rows: number in the file, what was done, code, name, why not.
class ResultRows final : public WordedRows {
public:
    /// `kept` tells of added items why they couldn't be taken back.
    ResultRows(const ImportSession& session, std::map<std::size_t, std::string> kept);
    static std::vector<ListColumn> columns();

private:
    struct Line {
        std::size_t place;
        RowState state;
    };
    static std::vector<Line> lines(const ImportSession& session);
    ResultRows(const ImportSession& session, std::map<std::size_t, std::string> kept, std::vector<Line> lines);
    std::vector<std::string> texts(std::size_t row) const override;

    const ImportSession& session_;
    std::map<std::size_t, std::string> kept_;
    std::vector<Line> lines_;
};

}  // namespace orvenmod
