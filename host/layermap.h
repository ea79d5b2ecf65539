#ifndef LAYERMAP_H
#define LAYERMAP_H

// Names, colours and hatches of layers by GDS layer and datatype, read from a table. Three forms are told apart by
// their first line that says something:
//
//  - comma-separated: `name,purpose,layer:datatype,description`, the first line a heading. Lines without a pair are
//  headings.
//  - place-and-route map: `name kinds layer datatype`; '#' starts a comment. Kinds name what the layer carries
//  ("NET,PIN,VIA", "FILL",
//    ...); the name NAME marks the layer of labels ("NAME Metal1/PIN 8 25"). Unknown kinds are taken as they are.
//  - our own: `layer datatype name [#rrggbb] [pattern]`, one layer a line, painted in the order of the lines; '#' first
//  on a line
//    starts a comment. For the patterns see patternNames().
//
// Where a table of the first two forms names a pair more than once, the first drawing purpose wins, else the first
// line.

#include <QHash>
#include <QList>
#include <QPair>

#include "layercolours.h"

class QByteArray;

class LayerMap {
public:
  // What the table says of a pair. The purpose is empty where the table has none; our own form never has.
  struct MappedPair {
    int layer;
    int datatype;
    QString name;
    QString purpose;
  };

  // An empty map: every layer gets its generated style.
  LayerMap() = default;

  // Reads `fileName`. Raises HostError, naming file and line, for a file that cannot be read or a line that is not of
  // the table's form.
  static LayerMap fromFile(const QString &fileName);

  // The same for text in memory; `fileName` is used in messages.
  static LayerMap fromText(const QByteArray &text, const QString &fileName);

  // Style of a layer, mapped or not. The name is empty when the table has none.
  LayerStyle style(int layer, int datatype) const;

  bool contains(int layer, int datatype) const { return entries_.contains(qMakePair(layer, datatype)); }

  // Position in painting order, counted from 0: the line of our own form, else the place of well-known names in the
  // layer stack. -1 where neither is known.
  int paintingRank(int layer, int datatype) const;

  int count() const { return entries_.size(); }

  // All pairs in the order of the table.
  QList<MappedPair> pairs() const;

private:
  struct Entry {
    LayerStyle style;
    bool isDrawing = false;
    int rank = -1;
    QString layerName;
    QString purpose;
    int line = 0;
  };
  friend class LayerMapParser;

  QHash<QPair<int, int>, Entry> entries_;
};

#endif
