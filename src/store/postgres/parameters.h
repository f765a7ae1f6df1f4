// What is bound to a statement. Texts are copied, binary contents lie where they are.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/shape.h"
#include "store/tsql/translation.h"
#include "store/tsql/values.h"

namespace orvenmod::store::postgres {

class Parameters {
public:
    Parameters() = default;
    /// The literals of a statement that is a text. Throws tsql::Error where one can't be converted.
    Parameters(const tsql::Translation& translation, const tsql::Shape& shape);

    void addNull();
    /// Throws tsql::Error for a text that no server takes.
    void addText(std::string_view text);
    void addBinary(std::span<const std::byte> bytes);
    /// A value of the type, in the form that the server reads, and the text that it was made of: a decimal is written
    /// from its digits there.
    void addText(const tsql::Datum& value, std::string_view source, const tsql::Type& type);

    int count() const { return static_cast<int>(entries_.size()); }
    /// As the client library takes them; valid until the next add.
    const char* const* values() const;
    const int* lengths() const { return lengths_.data(); }
    const int* formats() const { return formats_.data(); }

private:
    void addLiteral(const tsql::Parameter& parameter, const tsql::Literal& literal);
    void addReal(double value, const tsql::Type& type);
    void putText(std::string_view text);

    struct Entry {
        const char* contents = nullptr;
        std::size_t offset = 0;  ///< of a text within texts_
        bool text = false;
    };

    std::vector<Entry> entries_;
    std::vector<int> lengths_;
    std::vector<int> formats_;
    std::string texts_;  // each with a zero behind it
    mutable std::vector<const char*> pointers_;
};

/// Whether the bytes are UTF-8 without a zero among them.
bool isText(std::string_view bytes);

}  // namespace orvenmod::store::postgres
