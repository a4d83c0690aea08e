#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "data-declaration",
     .title = "a declaration of data cannot be read",
     .meaning =
         R"~(A line that begins with "%! data" tells how a file of data becomes facts: %!
data sold("sales.csv", customer, amount*100). The relation's name comes first,
or class[key] for frames; then the file in double quotes, and behind it columns
and options. A file that the command line names becomes a relation called like
the file, which has to be a name in small letters.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(echo 'amount' > sales.csv
echo '%! data sold(sales.csv, amount)' > shop.zrl
zrl check shop.zrl
)~",
     .mended = R"~(echo 'amount' > sales.csv
echo '%! data sold("sales.csv", amount)' > shop.zrl
zrl check shop.zrl
)~"},
    {.code = "malformed-data",
     .title = "a file of data is not of its form",
     .meaning =
         R"~(The text of a CSV or JSON file, or a database, is not what its name says: a
double quote that is not closed, text behind a closing one, a comma too many, a
query that the database refuses. The file is not read on from there.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,remark\n1,12" pipe\n' > sales.csv
zrl check sales.csv
)~",
     .mended = R"~(printf 'customer,remark\n1,12 inch pipe\n' > sales.csv
zrl check sales.csv
)~"},
    {.code = "ragged-row",
     .title = "a row does not fit the columns",
     .meaning =
         R"~(A row of a CSV file has as many fields as the first line has; with more or
fewer, values would end up in wrong columns. Where nobody chose columns, the
objects of a JSON file have the keys of the first one: declare the columns that
are wanted.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,amount\nann,1,200\n' > sales.csv
zrl check sales.csv
)~",
     .mended = R"~(printf 'customer,amount\nann,1200\n' > sales.csv
zrl check sales.csv
)~"},
    {.code = "unknown-column",
     .title = "there is no such column in the data",
     .meaning =
         R"~(A declared column is none of the file's: not in the first line of a CSV file, in
no object of a JSON file, or not in the table. A file without a line of names is
declared with header=no, and its columns by number.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,amount\nann,12\n' > sales.csv
echo '%! data sold("sales.csv", custumer, amount)' > shop.zrl
zrl check shop.zrl
)~",
     .mended = R"~(printf 'customer,amount\nann,12\n' > sales.csv
echo '%! data sold("sales.csv", customer, amount)' > shop.zrl
zrl check shop.zrl
)~"},
    {.code = "data-value",
     .title = "a value cannot be what its column is declared to be",
     .meaning =
         R"~(A field holds no integer, number, name or date where the declaration asks for
one, a number with more digits than its factor keeps, one above 2147483647, or
an object or list that no value can hold. Nothing is rounded or cut: the
declaration or the data has to change.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,amount\nann,12.505\n' > sales.csv
echo '%! data sold("sales.csv", customer, amount*100)' > shop.zrl
zrl check shop.zrl
)~",
     .mended = R"~(printf 'customer,amount\nann,12.505\n' > sales.csv
echo '%! data sold("sales.csv", customer, amount*1000)' > shop.zrl
zrl check shop.zrl
)~"},
    {.code = "negative-value",
     .title = "a negative number, which is no integer here",
     .meaning =
         R"~(There are no negative integers. An offset moves all values of a column above 0,
and keeps their differences and their order; as a text, a number is only
compared for being the same.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'account,balance\nann,-40\n' > accounts.csv
echo '%! data balance("accounts.csv", account, balance)' > bank.zrl
zrl check bank.zrl
)~",
     .mended = R"~(printf 'account,balance\nann,-40\n' > accounts.csv
echo '%! data balance("accounts.csv", account, balance+100000)' > bank.zrl
zrl check bank.zrl
)~"},
    {.code = "quote-in-value",
     .title = "a text holds a double quote",
     .meaning =
         R"~(A string begins and ends with double quotes and cannot hold one: there is no
escape. The option quote says what is written in its place.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'item\n"a 12"" pipe"\n' > stock.csv
echo '%! data item("stock.csv", item:text)' > stock.zrl
zrl check stock.zrl
)~",
     .mended = R"~(printf 'item\n"a 12"" pipe"\n' > stock.csv
echo '%! data item("stock.csv", item:text, quote=" inch")' > stock.zrl
zrl check stock.zrl
)~"},
    {.code = "empty-value",
     .title = "a field is empty",
     .meaning =
         R"~(A fact has a value in each of its places. The option empty says what becomes of
a row with an empty field: empty=skip-row makes no fact of it, empty=unknown
writes the constant unknown, and any other constant, string or integer does
likewise. The attributes of frames need none of this: an empty field makes no
attribute.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,town\nann,\n' > people.csv
zrl check people.csv
)~",
     .mended = R"~(printf 'customer,town\nann,\n' > people.csv
echo '%! data lives("people.csv", customer, town, empty=unknown)' > towns.zrl
zrl check towns.zrl
)~"},
    {.code = "mixed-column",
     .severity = Severity::kWarning,
     .title = "the values of a column are of several kinds",
     .meaning =
         R"~(Without a declared kind, a whole number becomes an integer, a name in small
letters a constant, and anything else a string. ann is a constant then, and "St.
Ives" a string, and a rule that expects one kind misses the others. A declared
kind makes all of them the same: name:text, name:constant or name:integer.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'town\nyork\nSt. Ives\n' > towns.csv
zrl check towns.csv
)~",
     .mended = R"~(printf 'town\nyork\nSt. Ives\n' > towns.csv
echo '%! data town("towns.csv", town:text)' > towns.zrl
zrl check towns.zrl
)~"},
    {.code = "number-as-text",
     .severity = Severity::kWarning,
     .title = "a number becomes a string",
     .meaning =
         R"~(A number with a fraction, one above 2147483647, and one that begins with 0 is no
integer as it stands; without a declared kind it becomes a string, with which
nothing can be computed. amount*100 counts in hundredths, phone:text says that a
string is meant.
)~",
     .kind = ExampleKind::kCommand,
     .wrong = R"~(printf 'customer,amount\nann,12.50\n' > sales.csv
zrl check sales.csv
)~",
     .mended = R"~(printf 'customer,amount\nann,12.50\n' > sales.csv
echo '%! data sold("sales.csv", customer, amount*100)' > shop.zrl
zrl check shop.zrl
)~"},
});

}    // namespace

std::span<const Page> data_pages() {
  return kPages;
}

}    // namespace workbench
