#include "frame/adodc.h"

#include <utility>

#include "frame/fetchedrows.h"
#include "frame/services.h"

namespace orvenmod {

Adodc::~Adodc() { letGo(); }

void Adodc::setConnectionString(const std::string& text) {
    if (text == connectionString_) return;
    letGo();
    connectionString_ = text;
}

void Adodc::refresh() {
    if (!connection_) {
        connection_ = services().store.connect(connectionString_);
        connection_->setProgress([] { services().toolkit.paintPending(); });
    }
    try {
        store::Recordset rows = connection_->open(recordSource_);
        columns_ = rows.columns();
        grid_.bind(std::make_shared<FetchedRows>(std::move(rows)));
    } catch (const store::Failure& failure) {
        // A connection that broke is made anew by the next refresh.
        if (failure.kind() == store::FailureKind::connection) letGo();
        throw;
    }
}

bool Adodc::holdsNumbers(int column) const {
    if (column < 0 || static_cast<std::size_t>(column) >= columns_.size()) return false;
    const store::ColumnType type = columns_[static_cast<std::size_t>(column)].type;
    return type == store::ColumnType::integer || type == store::ColumnType::decimal || type == store::ColumnType::real;
}

void Adodc::letGo() noexcept {
    if (connection_) connection_->close();
    connection_.reset();
}

}  // namespace orvenmod
