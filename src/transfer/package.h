// A workbook's container: a zip file of XML parts, each read as a stream. Of a sheet of any size a few nodes are in
// memory at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct _GsfInfile;
struct _GsfInput;
struct _xmlTextReader;

namespace orvenmod {

/// One part, read node by node.
class XmlPart {
public:
    ~XmlPart();
    XmlPart(const XmlPart&) = delete;
    XmlPart& operator=(const XmlPart&) = delete;

    /// Goes on to the next node; false at the end. Throws std::runtime_error where the part is broken, or declares
    /// entities, which no workbook does.
    bool next();
    /// Goes on behind all that the element holds.
    bool nextBeyond();

    bool isStart() const;  ///< of an element, an empty one included
    bool isEmpty() const;  ///< an element that holds nothing and has no end of its own
    bool isEnd() const;
    bool isText() const;            ///< or blanks that count
    std::string_view name() const;  ///< without its namespace
    std::string_view text() const;
    int depth() const;
    /// How many of its bytes were read.
    std::uint64_t position() const;
    /// By its name without namespace, "" where it hasn't one.
    std::string attribute(const char* name) const;

private:
    friend class Package;
    explicit XmlPart(_GsfInput* part);
    bool took(int result);

    _GsfInput* part_;
    _xmlTextReader* reader_;
};

class Package {
public:
    /// Throws std::runtime_error for a file that is no package.
    explicit Package(const std::string& path);
    ~Package();
    Package(const Package&) = delete;
    Package& operator=(const Package&) = delete;

    bool has(const std::string& part) const;
    /// Null where there is none of that path.
    std::unique_ptr<XmlPart> open(const std::string& part) const;
    /// How many bytes the part has unpacked, 0 where there is none.
    std::uint64_t size(const std::string& part) const;
    /// How many bytes the parts have unpacked, by the container's directory.
    std::uint64_t unpackedSize() const;

private:
    _GsfInput* find(const std::string& part) const;

    _GsfInput* file_;
    _GsfInfile* zip_;
};

/// Whether the file is a compound file that holds a workbook under a password.
bool isEncryptedCompound(const std::string& path);

}  // namespace orvenmod
