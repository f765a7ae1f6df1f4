// The classes with fixed roles. What a column of theirs is, how it is called and whether the list shows it stands here
// once; tables, views and rows are made from it.
#include "store/itemclass.h"
#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

constexpr int kSupplierClass = 2;
constexpr std::string_view kPriceFormat = "#,##0.00";

std::vector<FixedField> partnerFields() {
    return {
        {"联系人", "fLinkMan", kTextField, "varchar(50)", 1400}, {"电话", "fPhone", kTextField, "varchar(50)", 1800},
        {"手机", "fMobile", kTextField, "varchar(50)", 1800},    {"地址", "fAddress", kTextField, "varchar(200)", 4000},
        {"开户银行", "fBank", kTextField, "varchar(100)"},       {"银行账号", "fBankNo", kTextField, "varchar(50)"},
        {"税号", "fTaxNo", kTextField, "varchar(50)"},           {"备注", "fNote", kTextField, "varchar(200)"},
    };
}

std::vector<FixedField> customerFields() {
    std::vector<FixedField> fields = partnerFields();
    fields.push_back({"信用额度", "fCredit", kNumberField, "decimal(18,2)", 0, 2});
    fields.push_back({"开户日期", "fOpenDate", kDateField, "datetime"});
    return fields;
}

// fA to fH keep their nature whatever their captions: three texts, two numbers, two dates and a lookup.
std::vector<FixedField> goodsFields() {
    return {
        {"规格型号", "fModel", kTextField, "varchar(100)", 2000},
        {"计量单位", "fUnit", kTextField, "varchar(50)", 1000},
        {"最低库存", "fMinQty", kNumberField, "decimal(18,4)", 1200, 2},
        {"最大库存", "fMaxQty", kNumberField, "decimal(18,4)", 1200, 2},
        {"品牌", "fA", kTextField, "varchar(100)", 1400},
        {"产地", "fB", kTextField, "varchar(100)"},
        {"条码", "fC", kTextField, "varchar(100)"},
        {"参考进价", "fD", kNumberField, "decimal(18,4)", 1200, 2, kPriceFormat},
        {"参考售价", "fE", kNumberField, "decimal(18,4)", 1200, 2, kPriceFormat},
        {"建档日期", "fF", kDateField, "datetime", 1400},
        {"停售日期", "fG", kDateField, "datetime"},
        {"主供应商", "fH", kTextField, "int", 2600, 0, "", kSupplierClass},
    };
}

std::vector<FixedField> accountFields() {
    return {
        {"开户银行", "fBank", kTextField, "varchar(100)", 3000},
        {"银行账号", "fBankNo", kTextField, "varchar(50)", 2600},
        {"户名", "fHolder", kTextField, "varchar(100)", 3000},
        {"备注", "fNote", kTextField, "varchar(200)"},
    };
}

}  // namespace

const std::vector<FixedClass>& fixedClasses() {
    static const std::vector<FixedClass> kClasses = {
        {1, "客户", "tblCustomer", kBalanceField, "应收款", 3, customerFields()},
        {kSupplierClass, "供应商", "tblSupplier", kBalanceField, "应付款", 3, partnerFields()},
        {kGoods, "货品", "ICItem", "fTimeQty", "库存数", 5, goodsFields()},
        {11, "账户", "tblAccount", kBalanceField, "账号余额", 3, accountFields()},
    };
    return kClasses;
}

std::string_view balanceCaption(std::int32_t itemClass) {
    for (const FixedClass& fixed : fixedClasses()) {
        if (fixed.id == itemClass && fixed.amountField == kBalanceField) return fixed.amountCaption;
    }
    return "";
}

SchemaTable fixedClassTable(const FixedClass& fixed) {
    SchemaTable table{fixed.table,
                      'A',
                      {{"fItemId", "int", kNotNull}, {"fNumber", "varchar(100)"}, {"fName", "varchar(100)"}},
                      "fItemId",
                      {{fixed.id == kGoods ? "fNumber,fItemId" : "fNumber"}}};
    for (const FixedField& field : fixed.fields) {
        table.columns.push_back({field.name, field.column});
    }
    if (fixed.amountField == kBalanceField) {
        table.columns.push_back({kBalanceField, "decimal(18,2)"});
    }
    return table;
}

}  // namespace orvenmod::store
