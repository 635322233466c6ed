#pragma once

#include <QString>

// The statement with which the donor step reads one activity's enrolments
// from a school year's database: student, monthly price, paying family
// member, the member's address and province, the twelve month flags
// (dato1 = enero ... dato12 = diciembre) and the keys IDAlumno and
// IDMiembroFamilia. Payer, address and province are left joins, so an
// enrolment without them still gives a row (with nulls). Rows come ordered
// by the student's surnames and name, then the payer's, so one student's rows
// and, within them, one payer's rows are adjacent.
QString DonorQuery(int idActividad);
