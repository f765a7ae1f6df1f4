#include "frame/adodc.h"

#include <utility>

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
        rows_ = std::make_shared<ListedRows>(connection_->openList(recordSource_));
        grid_.bind(rows_);
    } catch (const store::Failure& failure) {
        // A connection that broke is made anew by the next refresh.
        if (failure.kind() == store::FailureKind::connection) letGo();
        throw;
    }
}

void Adodc::tend() {
    if (rows_) rows_->tend();
}

bool Adodc::holdsNumbers(int column) const {
    if (!rows_ || column < 0 || column >= rows_->columnCount()) return false;
    const store::ColumnType type = rows_->columns()[static_cast<std::size_t>(column)].type;
    return type == store::ColumnType::integer || type == store::ColumnType::decimal || type == store::ColumnType::real;
}

void Adodc::letGo() noexcept {
    if (connection_) connection_->close();
    connection_.reset();
}

}  // namespace orvenmod
