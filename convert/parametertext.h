#ifndef PARAMETERTEXT_H
#define PARAMETERTEXT_H

#include <QString>

#include <oa/oaDesignDB.h>

// A parameter as the host edits it: the word for its type ("int", "double", "list" or "string") and its value. A
// boolean is a list of both choices with the current one in front, a float a double. Application data and times cannot
// be edited: "unsupported", without a value.
struct ParameterText {
  const char *type;
  QString value;

  bool isSupported() const;
};

ParameterText toParameterText(const oa::oaParam &param);

// The name alone.
QString toParameterName(const oa::oaParam &param);

#endif
