// The numbers of failures, each with the arguments of its message in the order in which the wording has them.
//
// A failure keeps the server's number wherever it comes from, so that a caller sees no difference between the targets:
// an embedded file that lacks a table answers 208, as a server does. The wordings stand in messages_statement.cpp and
// messages_data.cpp. Some numbers are thrown nowhere here: they are known because a server sends them.
//
//   throw Error(kUnknownColumn, {"fnmae"});   ->   207  列名 'fnmae' 无效。
#pragma once

namespace orvenmod::store::tsql {

enum FailureNumber : int {
    // The statement's text, its names and its types.
    kSyntaxNear = 102,               ///< {near}
    kNameTooLong = 103,              ///< {name, most}
    kOrderNotInUnion = 104,          ///< {}
    kUnclosedQuote = 105,            ///< {text behind the quote}
    kTooManyTables = 106,            ///< {most}
    kUnknownPrefix = 107,            ///< {alias}
    kOrderPositionOutOfRange = 108,  ///< {position}
    kFewerValuesThanColumns = 109,   ///< {}
    kMoreValuesThanColumns = 110,    ///< {}
    kNotFirstInBatch = 111,          ///< {}
    kUnclosedComment = 113,          ///< {}
    kSubqueryColumns = 116,          ///< {}
    kInsertSelectsFewer = 120,       ///< {}
    kInsertSelectsMore = 121,        ///< {}
    kNegativeTop = 127,              ///< {}
    kNameNotPermitted = 128,         ///< {name}
    kAggregateOfAggregate = 130,     ///< {}
    kSizeTooLarge = 131,             ///< {size, "column" or "type", name, most}
    kUndeclaredVariable = 137,       ///< {variable}
    kAggregateInGroupBy = 144,       ///< {}
    kOrderNotInDistinct = 145,       ///< {}
    kAggregateInWhere = 147,         ///< {}
    kUnknownOption = 155,            ///< {word, "dateadd"}
    kSyntaxNearKeyword = 156,        ///< {keyword}
    kAggregateInSet = 157,           ///< {}
    kGroupByConstant = 164,          ///< {}
    kSyntaxNearOnLine = 170,         ///< {near}, as older servers number 102
    kArgumentCount = 174,            ///< {function, count}
    kArgumentRange = 189,            ///< {function, least, most}
    kUnknownFunction = 195,          ///< {function}
    kMissingParameter = 201,         ///< {procedure, parameter}
    kUnionColumns = 205,             ///< {}
    kTypeClash = 206,                ///< {from, to}
    kUnknownColumn = 207,            ///< {column}
    kUnknownObject = 208,            ///< {object}
    kAmbiguousColumn = 209,          ///< {column}
    kInsertColumns = 213,            ///< {}
    kParameterType = 214,            ///< {}
    kIntegerOverflow = 220,          ///< {type, value}
    kFloatOverflow = 232,            ///< {type, value}
    kNoRight = 229,                  ///< {database, the server's own words}
    kMoneySyntax = 235,              ///< {}
    kMoneyOverflow = 236,            ///< {}
    kDateSyntax = 241,               ///< {}
    kDateOutOfRange = 242,           ///< {from, to}
    kUnknownCastType = 243,          ///< {type}
    kTextBeyondSmallInteger = 244,   ///< {from, value, "INT1" or "INT2"}
    kTextIsNoInteger = 245,          ///< {from, value, to}
    kTextBeyondInteger = 248,        ///< {from, value}
    kFunctionType = 256,             ///< {type, function}
    kNoImplicitConversion = 257,     ///< {from, to}
    kNoImplicitAssignment = 260,     ///< {from, to, table, column}
    kNoTableForStar = 263,           ///< {}
    kColumnAssignedTwice = 264,      ///< {column}
    kComputedColumn = 271,           ///< {column}
    kNoDateStyle = 281,              ///< {style, from}
    kDateParts = 289,                ///< {}
    kSmallDateSyntax = 295,          ///< {}
    kSmallDateOutOfRange = 296,      ///< {}
    kLargeTypeCompared = 306,        ///< {}
    kOperandTypes = 402,             ///< {left, right, operator}
    kOperatorType = 403,             ///< {type, operator}
    kConstantOrder = 408,            ///< {}
    kEscapeCharacter = 506,          ///< {text}
    kSubqueryRows = 512,             ///< {}
    kNullRefused = 515,              ///< {column, table, statement}
    kDateAddOverflow = 517,          ///< {type}
    kCannotConvert = 518,            ///< {from, to}
    kNoExplicitConversion = 529,     ///< {from, to}
    kDateDifferenceOverflow = 535,   ///< {}
    kNegativeLength = 536,           ///< {"left" or "right"}
    kNegativeSubstringLength = 537,  ///< {"substring"}
    kIdentityInserted = 544,         ///< {table}
    kConstraintConflict = 547,       ///< {statement, kind, constraint, table}

    // Queries, objects, keys and transactions.
    kNumberTooLong = 1007,          ///< {number}
    kOrderByVariable = 1008,        ///< {}
    kAliasTwice = 1011,             ///< {alias}
    kExposedNameTwice = 1013,       ///< {table}
    kOrderWithoutTop = 1033,        ///< {}
    kEmptyName = 1038,              ///< {}
    kTopNotInteger = 1060,          ///< {}
    kTiesWithoutOrder = 1062,       ///< {}
    kIndexOfUnknownTable = 1088,    ///< {table}
    kNoSpace = 1105,                ///< {database}
    kDeadlock = 1205,               ///< {process}
    kLockTimeout = 1222,            ///< {}
    kDuplicateForNewIndex = 1505,   ///< {table, index, key}
    kConstraintNotMade = 1750,      ///< {}
    kPrimaryKeyExists = 1779,       ///< {table}
    kUnknownIndexColumn = 1911,     ///< {column}
    kIndexExists = 1913,            ///< {index, table}
    kIndexColumnType = 1919,        ///< {column, table}
    kDuplicateInIndex = 2601,       ///< {table, index, key}
    kDuplicateKey = 2627,           ///< {"PRIMARY KEY" or "UNIQUE KEY", constraint, table, key}
    kTextTruncated = 2628,          ///< {table, column, value}
    kColumnExists = 2705,           ///< {column, table}
    kObjectExists = 2714,           ///< {object}
    kUnknownType = 2715,            ///< {type}
    kWidthNotAllowed = 2716,        ///< {position, type}
    kTwoIdentities = 2744,          ///< {table}
    kColumnWidth = 2748,            ///< {size}
    kIdentityType = 2749,           ///< {}
    kPrecisionTooLarge = 2750,      ///< {}
    kScaleTooLarge = 2751,          ///< {}
    kUnknownSchema = 2760,          ///< {}
    kFloatDomain = 3623,            ///< {}
    kCannotDrop = 3701,             ///< {"drop", "table" or "view" or "index", name}
    kDropOfOtherKind = 3705,        ///< {"DROP TABLE" or "DROP VIEW", name, kind}
    kNotAConstraint = 3728,         ///< {name}
    kCommitWithoutBegin = 3902,     ///< {}
    kRollbackWithoutBegin = 3903,   ///< {}
    kTransactionLost = 3930,        ///< {}
    kCannotOpenDatabase = 4060,     ///< {database}
    kUnboundIdentifier = 4104,      ///< {identifier}
    kConditionExpected = 4145,      ///< {near}
    kViewAggregates = 4403,         ///< {view}
    kViewOfTables = 4405,           ///< {view}
    kViewDerives = 4406,            ///< {view}
    kViewNamesMore = 4502,          ///< {view}
    kViewColumnTwice = 4506,        ///< {column, view}
    kViewColumnUnnamed = 4511,      ///< {position, view}
    kTruncateUnknownTable = 4701,   ///< {table}
    kTruncateNoTable = 4708,        ///< {object}
    kAddedColumnNotNull = 4901,     ///< {column, table}
    kAlterUnknownTable = 4902,      ///< {table}
    kAlterNoTable = 4909,           ///< {object}
    kColumnInUse = 4922,            ///< {"DROP COLUMN" or "ALTER COLUMN", column}
    kOnlyColumn = 4923,             ///< {column, table}
    kDropUnknownColumn = 4924,      ///< {verb, column, table}
    kCannotAlterColumn = 4928,      ///< {column, reason}
    kDependsOnColumn = 5074,        ///< {kind, name, column}
    kIdentityNeedsList = 8101,      ///< {table}
    kIdentityUpdated = 8102,        ///< {column}
    kTwoPrimaryKeys = 8110,         ///< {table}
    kNullablePrimaryKey = 8111,     ///< {table}
    kConversionError = 8114,        ///< {from, to}
    kArithmeticOverflow = 8115,     ///< {from or "expression", to}
    kArgumentType = 8116,           ///< {type, position, function}
    kOperandType = 8117,            ///< {type, operator or function}
    kSelectedWithoutGroup = 8118,   ///< {table, column}
    kSelectedNotGrouped = 8120,     ///< {column}
    kHavingNotGrouped = 8121,       ///< {column}
    kOrderNotGrouped = 8127,        ///< {column}
    kCaseOfNulls = 8133,            ///< {}
    kDivisionByZero = 8134,         ///< {}
    kTooManyArguments = 8144,       ///< {function}
    kTruncated = 8152,              ///< {}
    kDerivedColumnUnnamed = 8155,   ///< {position, alias}
    kDerivedColumnTwice = 8156,     ///< {column, alias}
    kMoreColumnsThanNames = 8158,   ///< {alias}
    kFewerColumnsThanNames = 8159,  ///< {alias}
    kNoIdentifier = 8169,           ///< {}
    kLogFull = 9002,                ///< {database}
    kDatePartType = 9810,           ///< {part, type, function}
    kRowsOfUnequalLength = 10709,   ///< {}
    kLoginFailed = 18456,           ///< {user}

    // The embedded store's own, beside the server's.
    kNotSupported = 40000,         ///< {what, as written}: the dialect has it, this store does not
    kNoFile = 50011,               ///< {path}
    kIsFolder = 50012,             ///< {path}
    kNoDatabase = 50013,           ///< {path}
    kUnreadable = 50014,           ///< {path, reason}
    kReadOnly = 50015,             ///< {path}
    kBusy = 50016,                 ///< {path}
    kDiskFull = 50017,             ///< {path}
    kInputOutput = 50018,          ///< {path, reason}
    kBadConnectionString = 50019,  ///< {what is wrong with it}
    kClosed = 50020,               ///< {}
    kNoRowBegun = 50021,           ///< {}
    kStoreReports = 50022,         ///< {path, the store's own words}
    kNoRows = 50023,               ///< {}
    kTransactionOpen = 50024,      ///< {}
    kOutOfMemory = 50025,          ///< {}

    // What can be wrong with a server, whichever it is.
    kServerUnreachable = 50031,  ///< {server, reason}
    kServerSilent = 50032,       ///< {server, seconds}
    kConnectionLost = 50033,     ///< {server}
    kCommitUnknown = 50034,      ///< {server}: the connection was lost while a commit was awaited
    kServerTooOld = 50035,       ///< {server, its version, the least}
    kServerEncoding = 50036,     ///< {database, its encoding}
    kNoText = 50037,             ///< {}: a NUL, or bytes that are no UTF-8
    kBeyondCodePage = 50038,     ///< {character}
    kSharedSessions = 50039,     ///< {server}: a pooler in front of it moves sessions about

    // What can be wrong with a driver, and with what it makes of a server.
    kNoDriver = 50051,       ///< {the names of those that would do}
    kUnknownDriver = 50052,  ///< {driver}
    kUnknownSource = 50053,  ///< {data source}
    kNotEncrypted = 50054,   ///< {server, the driver's own words}
    kLettersLost = 50055,    ///< {driver}
    kNoChinese = 50056,      ///< {database}
};

}  // namespace orvenmod::store::tsql
