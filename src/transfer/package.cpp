#include "transfer/package.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile-zip.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>
#include <libxml/xmlreader.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "transfer/gsfowned.h"

namespace orvenmod {

namespace {

int readBytes(void* context, char* buffer, int length) {
    auto* part = static_cast<GsfInput*>(context);
    const gsf_off_t left = std::min<gsf_off_t>(length, gsf_input_remaining(part));
    if (left == 0) return 0;
    return gsf_input_read(part, static_cast<std::size_t>(left), reinterpret_cast<guint8*>(buffer))
               ? static_cast<int>(left)
               : -1;
}

int closeNothing(void*) { return 0; }

// The reader's own words go to the terminal otherwise.
void keepQuiet(void*, const char*, xmlParserSeverities, xmlTextReaderLocatorPtr) {}

std::string_view viewOf(const xmlChar* text) { return text ? reinterpret_cast<const char*>(text) : ""; }

std::uint64_t sizeBelow(GsfInfile* folder) {
    std::uint64_t bytes = 0;
    for (int i = 0; i < gsf_infile_num_children(folder); ++i) {
        const Owned<GsfInput> part(gsf_infile_child_by_index(folder, i));
        if (!part) continue;
        const bool inner = GSF_IS_INFILE(part.get()) && gsf_infile_num_children(GSF_INFILE(part.get())) > 0;
        bytes += inner ? sizeBelow(GSF_INFILE(part.get())) : static_cast<std::uint64_t>(gsf_input_size(part.get()));
    }
    return bytes;
}

}  // namespace

// Long texts are no attack here: the container's size was judged before.
XmlPart::XmlPart(_GsfInput* part)
    : part_(part),
      reader_(xmlReaderForIO(readBytes, closeNothing, part, nullptr, nullptr,
                             XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT)) {
    if (reader_) xmlTextReaderSetErrorHandler(reader_, keepQuiet, nullptr);
}

XmlPart::~XmlPart() {
    if (reader_) xmlFreeTextReader(reader_);
    g_object_unref(part_);
}

bool XmlPart::took(int result) {
    if (result < 0 || !reader_) throw std::runtime_error("broken part");
    if (result == 1 && xmlTextReaderNodeType(reader_) == XML_READER_TYPE_DOCUMENT_TYPE)
        throw std::runtime_error("a part declares a document type");
    return result == 1;
}

bool XmlPart::next() { return took(reader_ ? xmlTextReaderRead(reader_) : -1); }
bool XmlPart::nextBeyond() { return took(reader_ ? xmlTextReaderNext(reader_) : -1); }
bool XmlPart::isStart() const { return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_ELEMENT; }
bool XmlPart::isEmpty() const { return xmlTextReaderIsEmptyElement(reader_) == 1; }
bool XmlPart::isEnd() const { return xmlTextReaderNodeType(reader_) == XML_READER_TYPE_END_ELEMENT; }

bool XmlPart::isText() const {
    const int type = xmlTextReaderNodeType(reader_);
    return type == XML_READER_TYPE_TEXT || type == XML_READER_TYPE_CDATA ||
           type == XML_READER_TYPE_SIGNIFICANT_WHITESPACE || type == XML_READER_TYPE_WHITESPACE;
}

std::string_view XmlPart::name() const { return viewOf(xmlTextReaderConstLocalName(reader_)); }
std::string_view XmlPart::text() const { return viewOf(xmlTextReaderConstValue(reader_)); }
int XmlPart::depth() const { return xmlTextReaderDepth(reader_); }

std::uint64_t XmlPart::position() const { return static_cast<std::uint64_t>(gsf_input_tell(part_)); }

std::string XmlPart::attribute(const char* name) const {
    std::string value;
    for (int more = xmlTextReaderMoveToFirstAttribute(reader_); more == 1;
         more = xmlTextReaderMoveToNextAttribute(reader_)) {
        if (viewOf(xmlTextReaderConstLocalName(reader_)) != name) continue;
        value = viewOf(xmlTextReaderConstValue(reader_));
        break;
    }
    xmlTextReaderMoveToElement(reader_);
    return value;
}

Package::Package(const std::string& path) : file_(gsf_input_stdio_new(path.c_str(), nullptr)), zip_(nullptr) {
    if (file_) zip_ = gsf_infile_zip_new(file_, nullptr);
    if (zip_) return;
    if (file_) g_object_unref(file_);
    throw std::runtime_error("no package");
}

Package::~Package() {
    g_object_unref(zip_);
    g_object_unref(file_);
}

_GsfInput* Package::find(const std::string& part) const {
    std::vector<std::string> names;
    for (std::size_t at = part.starts_with('/') ? 1 : 0; at <= part.size();) {
        const std::size_t end = std::min(part.find('/', at), part.size());
        names.push_back(part.substr(at, end - at));
        at = end + 1;
    }
    std::vector<const char*> path;
    for (const std::string& name : names)
        path.push_back(name.c_str());
    path.push_back(nullptr);
    return gsf_infile_child_by_aname(zip_, path.data());
}

bool Package::has(const std::string& part) const { return Owned<GsfInput>(find(part)) != nullptr; }

std::unique_ptr<XmlPart> Package::open(const std::string& part) const {
    GsfInput* input = find(part);
    return std::unique_ptr<XmlPart>(input ? new XmlPart(input) : nullptr);
}

std::uint64_t Package::size(const std::string& part) const {
    const Owned<GsfInput> found(find(part));
    return found ? static_cast<std::uint64_t>(gsf_input_size(found.get())) : 0;
}

std::uint64_t Package::unpackedSize() const { return sizeBelow(zip_); }

bool isEncryptedCompound(const std::string& path) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) return false;
    const Owned<GsfInfile> compound(gsf_infile_msole_new(file.get(), nullptr));
    return compound && Owned<GsfInput>(gsf_infile_child_by_name(compound.get(), "EncryptedPackage"));
}

}  // namespace orvenmod
