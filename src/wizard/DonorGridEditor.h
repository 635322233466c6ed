#pragma once

class frmActividadAlumno;

// Editing the donor grid in place: a click on "Mostrar" toggles the mark
// and moves the running total by the row's amounts; a click on the payer,
// the DNI or an amount opens the edit box over the cell; leaving the box
// writes the cell back (names also into the donor record, amounts as
// "0.00" with the total moved by the difference).
class DonorGridEditor
{
public:
    explicit DonorGridEditor(frmActividadAlumno &form) : m_form(form) {}

    void Click();
    // The key filter of the edit box (amount columns only).
    void KeyPress(int &keyAscii);
    // Leaving the edit box commits the cell under edit.
    void Commit();

    int EditRow() const { return m_row; }
    int EditCol() const { return m_col; }

private:
    void ToggleMark(int row);
    void OpenEditBox(int row, int col);

    frmActividadAlumno &m_form;
    int m_row = -1;
    int m_col = -1;
};
