#ifndef DEFINITIONDATA_H
#define DEFINITIONDATA_H

#include <map>
#include <string>

#include <oa/oaDesignDB.h>

typedef std::map<std::string, std::string> DefinitionData;

// How definitionData() does it. A kit may show the whole table of a definition; the first form is there for those only.
template <typename Definition>
auto definitionDataFrom(Definition &definition, int) -> decltype(definition.getData(), DefinitionData()) {
  return DefinitionData(definition.getData().begin(), definition.getData().end());
}
template <typename Definition> DefinitionData definitionDataFrom(Definition &definition, long) {
  DefinitionData data;
  oa::oaString text;
  for (const char *name : {"GenCellProc", "ScriptEngineName", "TimeLimit"}) {
    if (definition.getDataValue(name, text)) {
      data[name] = static_cast<const oa::oaChar *>(text);
    }
  }
  return data;
}

// The texts that an evaluator keeps with a super master, by name. Where a definition gives texts by their names only,
// those with the names that script evaluators use.
template <typename Definition> DefinitionData definitionData(Definition &definition) {
  return definitionDataFrom(definition, 0);
}

#endif
