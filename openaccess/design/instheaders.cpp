#include "instheaders.h"

#include "connectivityaccess.h"
#include "instaccess.h"
#include "oa/oaDesign.h"
#include "storedparams.h"
#include "supermaster.h"

#include <vector>

namespace OpenAccess_4 {
namespace kit {

namespace {

// Keys of the look-up. No name holds a line feed: names on disk are escaped, and this is only a key in memory anyway.
std::string masterKey(const std::string &lib, const std::string &cell, const std::string &view) {
  return lib + "\n" + cell + "\n" + view;
}
std::string subHeaderKey(Row super, const oaParamArray &params) {
  return "\n" + std::to_string(super) + " " + paramKey(params);
}

std::string keyOf(const DesignDatabase &design, Row header) {
  const InstHeaderTable &headers = design.instHeaders;
  if (isSubInstHeader(design, header)) {
    oaParamArray params;
    getInstHeaderParams(design, header, params);
    return subHeaderKey(headers.super[header], params);
  }
  const StringTable &strings = design.strings();
  return masterKey(strings.text(headers.lib[header]), strings.text(headers.cell[header]),
                   strings.text(headers.view[header]));
}

NameIndex &headersByKey(DesignDatabase &design) {
  NameIndex &index = design.connectivity.instHeadersByKey;
  if (!index.isBuilt()) {
    index.clear();
    for (Row row = design.instHeaders.nextAlive(kNoRow); row != kNoRow; row = design.instHeaders.nextAlive(row)) {
      index.add(keyOf(design, row), row);
    }
    index.setBuilt();
  }
  return index;
}

Row addHeader(DesignDatabase &design) {
  InstHeaderTable &headers = design.instHeaders;
  const Row row = headers.addRow();
  headers.kind.set(row, oacInstHeaderType);
  oaBox unknown;
  unknown.init();
  headers.masterBox.set(row, unknown);
  return row;
}

Row addSubHeader(DesignDatabase &design, Row super, const oaParamArray &params) {
  InstHeaderTable &headers = design.instHeaders;
  const Row row = addHeader(design);
  headers.lib.set(row, headers.lib[super]);
  headers.cell.set(row, headers.cell[super]);
  headers.view.set(row, headers.view[super]);
  headers.super.set(row, super);
  headers.params.set(row, design.strings().add(storedParams(params)));
  headers.insts.set(super, headers.insts[super] + 1);
  headersByKey(design).add(subHeaderKey(super, params), row);
  if (design.connectivity.subHeadersOfInstHeader.isBuilt()) {
    design.connectivity.subHeadersOfInstHeader.add(super, row);
  }
  return row;
}

// Only a master that is open can be seen to be parametric: nothing is opened for the sake of an instance.
bool isOpenSuperMaster(const std::string &lib, const std::string &cell, const std::string &view) {
  const oaNativeNS ns;
  const oaDesign *master =
      oaDesign::find(oaScalarName(ns, lib.c_str()), oaScalarName(ns, cell.c_str()), oaScalarName(ns, view.c_str()));
  return master != nullptr && master->isSuperMaster();
}

// With the super headers above it that have no other sub header. A damaged file may have any number of those.
void destroyHeader(DesignDatabase &design, Row header) {
  InstHeaderTable &headers = design.instHeaders;
  for (;;) {
    headersByKey(design).remove(keyOf(design, header), header);
    const auto bound = design.boundMasters.find(header);
    if (bound != design.boundMasters.end()) {
      DesignDatabase &master = *bound->second;
      design.boundMasters.erase(bound);
      DesignDatabase::release(master);
    }
    const Row super = headers.super[header];
    design.destroyRow(headers, header);
    if (super == kNoRow) {
      return;
    }
    design.noteAbandonedRows();
    if (design.connectivity.subHeadersOfInstHeader.isBuilt()) {
      design.connectivity.subHeadersOfInstHeader.remove(super, header);
    }
    if (!headers.isAlive(super) || !isSuperInstHeader(design, super)) { // a damaged file
      return;
    }
    const std::uint32_t subs = headers.insts[super];
    if (subs > 1) {
      headers.insts.set(super, subs - 1);
      return;
    }
    header = super;
  }
}

} // namespace

Row findInstHeader(DesignDatabase &design, const std::string &lib, const std::string &cell, const std::string &view) {
  return headersByKey(design).find(masterKey(lib, cell, view));
}

Row instHeaderFor(DesignDatabase &design, const std::string &lib, const std::string &cell, const std::string &view,
                  const oaParamArray &params) {
  InstHeaderTable &headers = design.instHeaders;
  const bool isGiven = params.getNumElements() != 0;
  Row header = findInstHeader(design, lib, cell, view);
  if (header == kNoRow) {
    header = addHeader(design);
    headers.lib.set(header, design.strings().intern(lib));
    headers.cell.set(header, design.strings().intern(cell));
    headers.view.set(header, design.strings().intern(view));
    headersByKey(design).add(masterKey(lib, cell, view), header);
    headers.isSuper.set(header, isGiven || isOpenSuperMaster(lib, cell, view) ? 1 : 0);
    if (isGiven) { // held open for the instances to come
      (void)bindMaster(design, header);
    }
  } else if (isGiven) {
    becomeSuperHeader(design, header);
  }
  if (!isSuperInstHeader(design, header)) {
    return header;
  }
  const Row sub = headersByKey(design).find(subHeaderKey(header, params));
  return sub != kNoRow ? sub : addSubHeader(design, header, params);
}

void leaveInstHeader(DesignDatabase &design, Row inst) {
  const Row header = design.insts.header[inst];
  InstHeaderTable &headers = design.instHeaders;
  if (design.instsOfHeader.isBuilt()) {
    design.instsOfHeader.remove(header, inst);
  }
  instsChanged(design);
  if (!headers.isAlive(header)) {
    return;
  }
  const std::uint32_t insts = headers.insts[header];
  if (insts > 1) {
    headers.insts.set(header, insts - 1);
  } else {
    destroyHeader(design, header);
  }
}

void getInstHeaderParams(const DesignDatabase &design, Row header, oaParamArray &params) {
  loadParams(design, design.instHeaders.params[header], params);
}

void becomeSuperHeader(DesignDatabase &design, Row header) {
  InstHeaderTable &headers = design.instHeaders;
  if (isSuperInstHeader(design, header) || isSubInstHeader(design, header)) {
    return;
  }
  const std::vector<Row> insts = instsOfHeader(design).rows(header).copy();
  headers.isSuper.set(header, 1);
  headers.insts.set(header, 0);
  const Row sub = addSubHeader(design, header, oaParamArray());
  headers.masterBox.set(sub, headers.masterBox[header]);
  headers.insts.set(sub, static_cast<std::uint32_t>(insts.size()));
  for (const Row inst : insts) {
    design.insts.header.set(inst, sub);
    Table::dropAside(design.insts.handle(inst));
  }
  design.instsOfHeader.clear();
  design.connectivity.isRefBoxKnown = false;
  design.boxMayChange();
}

void becomePlainHeader(DesignDatabase &design, Row header) {
  InstHeaderTable &headers = design.instHeaders;
  const Row super = isSubInstHeader(design, header) ? headers.super[header] : header;
  if (!headers.isAlive(super) || !isSuperInstHeader(design, super)) {
    return;
  }
  headers.isSuper.set(super, 0);
  std::uint32_t count = 0;
  for (const Row sub : subHeadersOfInstHeader(design).rows(super).copy()) {
    oaParamArray params;
    getInstHeaderParams(design, sub, params);
    for (const Row inst : instsOfHeader(design).rows(sub).copy()) {
      oaObject *handle = design.insts.handle(inst);
      design.insts.header.set(inst, super);
      Table::dropAside(handle);
      ++count;
      if (!isImplicitInst(design, inst)) {
        paramsBecomeProps(handle, params);
      }
    }
    destroyHeader(design, sub);
  }
  headers.insts.set(super, count);
  design.instsOfHeader.clear();
  design.connectivity.isRefBoxKnown = false;
  design.boxMayChange();
}

OwnerIndex &subHeadersOfInstHeader(DesignDatabase &design) {
  OwnerIndex &index = design.connectivity.subHeadersOfInstHeader;
  if (!index.isBuilt()) {
    index.clear();
    const InstHeaderTable &headers = design.instHeaders;
    for (Row row = headers.nextAlive(kNoRow); row != kNoRow; row = headers.nextAlive(row)) {
      if (isSubInstHeader(design, row)) {
        index.add(headers.super[row], row);
      }
    }
    index.setBuilt();
  }
  return index;
}

} // namespace kit
} // namespace OpenAccess_4
