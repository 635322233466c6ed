#pragma once

class frmActividadAlumno;

// "Certificados": the donors' letters merged from the template that suits
// the installed Office over CartaDonantes.mdb, then opened for the person.
// Without CartaDonantes.mdb (no declaration generated yet) it only says so;
// any failure of the merge itself is passed over, as the word processor's
// always was.
class CertificatePrinter
{
public:
    explicit CertificatePrinter(frmActividadAlumno &form);

    void Print();

private:
    frmActividadAlumno &m_form;
};
