#pragma once

#include "catalogue/DeductionLinks.h"
#include "catalogue/cTipoDeduc.h"
#include "wizard/Registros.h"

#include <QStringList>

using CommunityLinks = DeductionLinks<cComAut, &cComAut::IDComAut>;
using TypeLinks = DeductionLinks<cTipoDeduc, &cTipoDeduc::IDTipoDonativo>;

// The statements that store the edited links: an INSERT for each link
// added, a DELETE for each link removed, community links first, each kind
// in collection order; nothing for an unchanged link.
QStringList LinkStatements(const CommunityLinks &comunidades, const TypeLinks &tipos);
