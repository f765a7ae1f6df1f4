#include "store/stockfields.h"

namespace orvenmod::store {

namespace {

constexpr StockField kDimensions[] = {
    {"fText1", " ,isnull(a.ftext1,'') as ftext1 "},
    {"fText2", " ,isnull(a.ftext2,'') as ftext2 "},
    {"fNum1", " ,isnull(a.fNum1,0) as fNum1 "},
    {"fNum2", " ,isnull(a.fNum2,0) as fNum2 "},
    {"fDate1", " ,isnull(a.fDate1,'1900-01-01') as fDate1 "},
    {"fDate2", " ,isnull(a.fDate2,'1900-01-01') as fDate2 "},
    {"fHS1", " ,isnull(a.fHS1,0) as fHS1,isnull(F1.fNumber,'') as fHS1Number,isnull(F1.fName,'') as fHS1Name ",
     StockFieldKind::lookup},
    {"fHS2", " ,isnull(a.fHS2,0) as fHS2,isnull(F2.fNumber,'') as fHS2Number,isnull(F2.fName,'') as fHS2Name ",
     StockFieldKind::lookup},
};

constexpr StockField kGoodsFields[] = {
    {"fA", ",isnull(c.fA,'') as fA "},
    {"fB", ",isnull(c.fB,'') as fB "},
    {"fC", ",isnull(c.fC,'') as fC "},
    {"fD", ",isnull(c.fD,0) as fD "},
    {"fE", ",isnull(c.fE,0) as fE "},
    {"fF", ",isnull(c.fF,'1900-01-01') as fF "},
    {"fG", ",isnull(c.fG,'1900-01-01') as fG "},
    {"fH", ",isnull(c.fH,0) as fH,isnull(f3.fNumber,'') as fHNumber,isnull(f3.fname,'') as fHName  ",
     StockFieldKind::lookup},
};

const StockField* named(std::span<const StockField> fields, std::string_view name) {
    for (const StockField& field : fields) {
        if (field.name == name) return &field;
    }
    return nullptr;
}

}  // namespace

const StockField* stockDimension(std::string_view word) { return named(kDimensions, word); }

std::span<const StockField> stockGoodsFields() { return kGoodsFields; }

const StockField* goodsField(std::string_view name) { return named(kGoodsFields, name); }

}  // namespace orvenmod::store
