#pragma once
// Giving columns a role from the menu: identifying columns and moderators.
#include <functional>
#include <string>
#include <string_view>

namespace synthara::sheet {

class Sheet;

// Makes the existing column `col` the identifying column of population
// `populationIndex` (1 to 5). Gives that population's column, or -1 when
// refused.
int IdentifyPop(Sheet& sheet, int col, int populationIndex);

// Makes column `col` a moderator, unless it already serves another function.
bool IdentifyCols(Sheet& sheet, int col);

// The column properties dialog for a new column: gives the title typed, or ""
// when the user cancels.
using ColumnPropertiesDialog = std::function<std::string(Sheet&, int col)>;

// Adds a moderator column at the current column `current` and opens the
// properties dialog; gives the new column, or -1 when the user cancelled.
int InsertCols(Sheet& sheet, int current, const ColumnPropertiesDialog& properties);

// The boxes shared with MakePop: the population already has column
// `existing`; a column other than `except` already has the title `name` (true
// when one has, after saying so).
void SayPopulationExists(Sheet& sheet, int existing, int populationIndex);
bool SayIfNameInUse(Sheet& sheet, std::string_view name, int except);

}  // namespace synthara::sheet
