#ifndef TCLCOMPLETION_H
#define TCLCOMPLETION_H

#include <QByteArray>
#include <QList>

struct Tcl_Interp;

// What the word that ends the line may become, sorted: variables behind "$" or "${", otherwise commands and, as
// "name::", name spaces. A name is completed in the name space that the word names, else in the global one. Everything
// is UTF-8; the interpreter's result stays.
QList<QByteArray> tclCompletions(Tcl_Interp *interp, const QByteArray &line);

// Where that word begins in the line.
int tclWordStart(const QByteArray &line);

#endif
