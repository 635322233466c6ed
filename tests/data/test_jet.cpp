// The Jet SQL the program sends, run on SQLite files: bracketed names,
// Access's nested joins (the donor query), the cross-database copy of the
// certificate table, and Jet's Boolean literals.

#include "data/JetDialect.h"

#include "test_connection_fixture.h"

#include <QFileInfo>
#include <gtest/gtest.h>

namespace {

using connection_test::DataFolderTest;
using connection_test::ExpectDatabaseError;
using connection_test::U8;

class JetBrackets : public DataFolderTest
{
};

TEST_F(JetBrackets, BracketedNamesRunAsWritten)
{
    auto c = Connection::CreateSQLite(Path(QStringLiteral("CartaDonantes.mdb")), QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    c->Execute(QStringLiteral("CREATE TABLE [CartaDonantes] ([Apellido1] TEXT, [Nombre] TEXT, [Cod Pos] TEXT)"));
    c->Execute(QStringLiteral("INSERT INTO [CartaDonantes] VALUES ('Pérez', 'Ana', '28001')"));
    Recordset rs = c->Execute(QStringLiteral("Select * From [CartaDonantes];"));
    EXPECT_EQ(rs.FieldNames(), QStringList({QStringLiteral("Apellido1"), QStringLiteral("Nombre"), QStringLiteral("Cod Pos")}));
    rs = c->Execute(QStringLiteral("SELECT [CartaDonantes].[Cod Pos] FROM [CartaDonantes] WHERE [Nombre]='Ana'"));
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("Cod Pos")).toString()), "28001");
}

// The donor query, exactly as the donor grid sends it.
QString DonorQuery(int activity)
{
    return QStringLiteral(
               "SELECT Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Alumno_Actividad_Miembro.PrecioEuros, "
               "Miembrofamilia.Apellido1, Miembrofamilia.Apellido2, Miembrofamilia.Nombre AS Nombre1, "
               "Miembrofamilia.codFamilia, Miembrofamilia.DNI, direccion.direccion, direccion.poblacion, "
               "direccion.codigopostal, provincia.descripcion,")
        + QStringLiteral("enero as dato1, febrero as dato2, marzo as dato3, abril as dato4, mayo as dato5, junio as dato6, "
                         "julio as dato7, agosto as dato8, septiembre as dato9, octubre as dato10, noviembre as dato11, "
                         "diciembre as dato12, IDAlumno, IDMiembroFamilia ")
        + QStringLiteral(
              "FROM Alumno INNER JOIN (Alumno_Actividad_Miembro LEFT JOIN (Miembrofamiliapagador LEFT JOIN "
              "(MiembroFamilia LEFT JOIN (Direccion LEFT JOIN Provincia ON Provincia.IDProvincia=Direccion.codProvincia) "
              "ON Direccion.IDDireccion=MiembroFamilia.codDireccion) ON "
              "MiembroFamilia.IDMiembroFamilia=MiembroFamiliaPagador.codMiembroFamilia) ON "
              "MiembroFamiliaPagador.idMiembroFamiliaPagador=Alumno_Actividad_Miembro.codMiembroFamiliaPagador) ON "
              "Alumno.IDAlumno=Alumno_Actividad_Miembro.codAlumno ")
        + QStringLiteral("WHERE codActividad=") + QString::number(activity)
        + QStringLiteral(" ORDER BY Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Miembrofamilia.Apellido1, "
                         "Miembrofamilia.Apellido2, Miembrofamilia.Nombre");
}

class JetDonorQuery : public DataFolderTest
{
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        const QString months = QStringLiteral("enero BOOLEAN, febrero BOOLEAN, marzo BOOLEAN, abril BOOLEAN, mayo BOOLEAN, "
                                              "junio BOOLEAN, julio BOOLEAN, agosto BOOLEAN, septiembre BOOLEAN, "
                                              "octubre BOOLEAN, noviembre BOOLEAN, diciembre BOOLEAN");
        m_path = MakeDatabase(
            QStringLiteral("curso 2023.db"),
            {QStringLiteral("CREATE TABLE Alumno (IDAlumno INTEGER PRIMARY KEY, Apellido_1 TEXT COLLATE ES_CI, "
                            "Apellido_2 TEXT COLLATE ES_CI, Nombre TEXT COLLATE ES_CI)"),
             QStringLiteral("CREATE TABLE Alumno_Actividad_Miembro (codAlumno INTEGER, codActividad INTEGER, "
                            "codMiembroFamiliaPagador INTEGER, PrecioEuros REAL, ")
                 + months + QStringLiteral(")"),
             QStringLiteral("CREATE TABLE MiembroFamiliaPagador (idMiembroFamiliaPagador INTEGER PRIMARY KEY, "
                            "codMiembroFamilia INTEGER)"),
             QStringLiteral("CREATE TABLE MiembroFamilia (IDMiembroFamilia INTEGER PRIMARY KEY, Apellido1 TEXT COLLATE ES_CI, "
                            "Apellido2 TEXT COLLATE ES_CI, Nombre TEXT COLLATE ES_CI, codFamilia INTEGER, DNI TEXT, "
                            "codDireccion INTEGER)"),
             QStringLiteral("CREATE TABLE Direccion (IDDireccion INTEGER PRIMARY KEY, direccion TEXT, poblacion TEXT, "
                            "codigopostal TEXT, codProvincia INTEGER)"),
             QStringLiteral("CREATE TABLE Provincia (IDProvincia INTEGER PRIMARY KEY, descripcion TEXT)"),
             QStringLiteral("INSERT INTO Provincia VALUES (28, 'Madrid')"),
             QStringLiteral("INSERT INTO Direccion VALUES (1, 'C/ Mayor 1', 'Alcalá', '28801', 28)"),
             // An address whose province is not in Provincia.
             QStringLiteral("INSERT INTO Direccion VALUES (2, 'Plaza Sol 2', 'Getafe', '28901', 99)"),
             QStringLiteral("INSERT INTO MiembroFamilia VALUES (10, 'Ortiz', 'Gil', 'Ana', 100, '12345678Z', 1)"),
             QStringLiteral("INSERT INTO MiembroFamilia VALUES (11, 'Álvarez', 'Sanz', 'Luis', 100, '87654321X', 1)"),
             // A payer without an address.
             QStringLiteral("INSERT INTO MiembroFamilia VALUES (12, 'Muñoz', 'Mar', 'Eva', 101, 'X1234567L', NULL)"),
             QStringLiteral("INSERT INTO MiembroFamilia VALUES (13, 'Sol', 'Luna', 'Pepa', 102, '11111111H', 2)"),
             QStringLiteral("INSERT INTO MiembroFamiliaPagador VALUES (20, 10)"),
             QStringLiteral("INSERT INTO MiembroFamiliaPagador VALUES (21, 11)"),
             QStringLiteral("INSERT INTO MiembroFamiliaPagador VALUES (22, 12)"),
             QStringLiteral("INSERT INTO MiembroFamiliaPagador VALUES (23, 13)"),
             QStringLiteral("INSERT INTO Alumno VALUES (1, 'Ortiz', 'Álvarez', 'Juan')"),
             QStringLiteral("INSERT INTO Alumno VALUES (2, 'Muñoz', 'Mar', 'Iker')"),
             QStringLiteral("INSERT INTO Alumno VALUES (3, 'Sol', 'Luna', 'Leo')"),
             QStringLiteral("INSERT INTO Alumno VALUES (4, 'Abad', 'Ruiz', 'Noa')"),
             QStringLiteral("INSERT INTO Alumno VALUES (5, 'Vidal', 'Pons', 'Gal')"),
             // Juan pays through two members: both rows, payers by surname (Álvarez before Ortiz).
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (1, 7, 20, 30.5, -1,-1,0,0,0,0,0,0,0,0,0,0)"),
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (1, 7, 21, 30.5, 0,0,-1,0,0,0,0,0,0,0,0,0)"),
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (2, 7, 22, 12, -1,0,0,0,0,0,0,0,0,0,0,-1)"),
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (3, 7, 23, NULL, 0,0,0,0,0,0,0,0,0,0,0,0)"),
             // Without a payer.
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (4, 7, NULL, 20, -1,-1,-1,0,0,0,0,0,0,0,0,0)"),
             // Another activity.
             QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (5, 8, 20, 99, -1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1,-1)")});
    }

    QString m_path;
};

TEST_F(JetDonorQuery, ColumnsAreNamedAsTheReaderAddressesThem)
{
    Connection c(QStringLiteral("Provider=SQLite;Data Source=") + m_path);
    c.Open();
    const Recordset rs = c.Execute(DonorQuery(7));
    QStringList expected = {QStringLiteral("Apellido_1"), QStringLiteral("Apellido_2"), QStringLiteral("Nombre"),
                            QStringLiteral("PrecioEuros"), QStringLiteral("Apellido1"), QStringLiteral("Apellido2"),
                            QStringLiteral("Nombre1"), QStringLiteral("codFamilia"), QStringLiteral("DNI"),
                            QStringLiteral("direccion"), QStringLiteral("poblacion"), QStringLiteral("codigopostal"),
                            QStringLiteral("descripcion")};
    for (int i = 1; i <= 12; ++i)
        expected << QStringLiteral("dato%1").arg(i);
    expected << QStringLiteral("IDAlumno") << QStringLiteral("IDMiembroFamilia");
    EXPECT_EQ(rs.FieldNames(), expected);
}

TEST_F(JetDonorQuery, LeftJoinsKeepEnrolmentsWithoutPayerOrAddress)
{
    Connection c(QStringLiteral("Provider=SQLite;Data Source=") + m_path);
    c.Open();
    Recordset rs = c.Execute(DonorQuery(7));
    // student surname 1 | payer surname 1 | payer name | town | province | IDMiembroFamilia
    QStringList rows;
    while (!rs.Eof()) {
        QStringList cells;
        for (const char *field : {"Apellido_1", "Nombre", "Apellido1", "Nombre1", "poblacion", "descripcion",
                                  "IDMiembroFamilia", "PrecioEuros", "dato1", "dato12"}) {
            const QVariant v = rs.Fields(QString::fromLatin1(field));
            cells << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        }
        rows << cells.join(QLatin1Char('|'));
        rs.MoveNext();
    }
    EXPECT_EQ(rows, QStringList({
                        // No payer: every payer and address column is null.
                        QStringLiteral("Abad|Noa|NULL|NULL|NULL|NULL|NULL|20|-1|0"),
                        // A payer without an address.
                        QStringLiteral("Muñoz|Iker|Muñoz|Eva|NULL|NULL|12|12|-1|-1"),
                        // Two payers of one student, adjacent, by payer surname.
                        QStringLiteral("Ortiz|Juan|Álvarez|Luis|Alcalá|Madrid|11|30.5|0|0"),
                        QStringLiteral("Ortiz|Juan|Ortiz|Ana|Alcalá|Madrid|10|30.5|-1|0"),
                        // An address whose province is missing; a null price.
                        QStringLiteral("Sol|Leo|Sol|Pepa|Getafe|NULL|13|NULL|0|0"),
                    }));
}

TEST_F(JetDonorQuery, OtherActivityGivesOnlyItsRows)
{
    Connection c(QStringLiteral("Provider=SQLite;Data Source=") + m_path);
    c.Open();
    Recordset rs = c.Execute(DonorQuery(8));
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("Apellido_1")).toString()), "Vidal");
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("DNI")).toString()), "12345678Z");
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("codigopostal")).toString()), "28801");
    EXPECT_EQ(rs.Fields(QStringLiteral("codFamilia")).toInt(), 100);
    EXPECT_EQ(c.Execute(DonorQuery(9)).RecordCount(), 0);
}

class JetCrossDatabaseCopy : public DataFolderTest
{
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("Mis datos/Año 2024")));
        ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("Informes")));
        m_source = MakeDatabase(
            QStringLiteral("Mis datos/Año 2024/Modelo182.mdb"),
            {QStringLiteral("CREATE TABLE CartaDonantes (Apellido1 TEXT COLLATE ES_CI, Apellido2 TEXT COLLATE ES_CI, "
                            "Nombre TEXT COLLATE ES_CI, NIF TEXT, Importe TEXT, Poblacion TEXT, Direccion TEXT, "
                            "CodPos TEXT, Provincia TEXT)"),
             QStringLiteral("INSERT INTO CartaDonantes VALUES ('Ortiz', 'Gil', 'Ana', '12345678Z', '61,00', 'Alcalá', "
                            "'C/ Mayor 1', '28801', 'Madrid')"),
             QStringLiteral("INSERT INTO CartaDonantes VALUES ('Ñuñez', 'Paz', 'Rosa', '22222222J', '10,00', ' ', ' ', ' ', ' ')"),
             QStringLiteral("INSERT INTO CartaDonantes VALUES ('Álvarez', 'Sanz', 'Luis', '87654321X', '1.230,50', 'Alcalá', "
                            "'C/ Mayor 1', '28801', 'Madrid')"),
             QStringLiteral("INSERT INTO CartaDonantes VALUES ('Nuñez', 'Paz', 'Alba', '33333333P', '5,00', 'Getafe', "
                            "'Plaza Sol 2', '28901', 'Madrid')"),
             QStringLiteral("INSERT INTO CartaDonantes VALUES ('ALVAREZ', 'Sanz', 'Eva', '44444444A', '7,00', 'Getafe', "
                            "'Plaza Sol 2', '28901', 'Madrid')")});
        m_target = Connection::CreateSQLite(Path(QStringLiteral("Informes/CartaDonantes.mdb")),
                                            QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    }

    QStringList Surnames() { return Column(*m_target, QStringLiteral("SELECT Apellido1 FROM CartaDonantes")); }

    QString m_source;
    std::shared_ptr<Connection> m_target;
};

TEST_F(JetCrossDatabaseCopy, CopiesTheTableSortedFromAFileWithBlanksInItsPath)
{
    const QString sql = QStringLiteral("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [") + m_source
        + QStringLiteral(";pwd=zq417tev].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    QStringList seen;
    m_target->SetObserver([&](const Connection &, const QString &s) { seen << s; });
    const Recordset rs = m_target->Execute(sql);
    EXPECT_EQ(rs.FieldCount(), 0);
    EXPECT_EQ(m_target->RecordsAffected(), 5);
    EXPECT_EQ(seen, QStringList({sql}));
    // Spanish order, in the table's own row order (what the merge reads).
    EXPECT_EQ(Surnames(), QStringList({QStringLiteral("ALVAREZ"), QStringLiteral("Álvarez"), QStringLiteral("Nuñez"),
                                       QStringLiteral("Ñuñez"), QStringLiteral("Ortiz")}));
    Recordset all = m_target->Execute(QStringLiteral("SELECT * FROM CartaDonantes"));
    EXPECT_EQ(all.FieldNames(),
              QStringList({QStringLiteral("Apellido1"), QStringLiteral("Apellido2"), QStringLiteral("Nombre"),
                           QStringLiteral("NIF"), QStringLiteral("Importe"), QStringLiteral("Poblacion"),
                           QStringLiteral("Direccion"), QStringLiteral("CodPos"), QStringLiteral("Provincia")}));
    all.MoveNext();
    EXPECT_EQ(U8(all.Fields(QStringLiteral("Importe")).toString()), "1.230,50");
    EXPECT_EQ(U8(all.Fields(QStringLiteral("Poblacion")).toString()), "Alcalá");
    // The other file is no longer attached, and it still has its rows.
    EXPECT_EQ(Column(*m_target, QStringLiteral("SELECT name FROM pragma_database_list")), QStringList({QStringLiteral("main")}));
    Connection source(SQLiteString(m_source));
    source.Open();
    EXPECT_EQ(Scalar(source, QStringLiteral("SELECT COUNT(*) FROM CartaDonantes")).toInt(), 5);
}

TEST_F(JetCrossDatabaseCopy, RelativeFileWithoutPasswordIsTakenFromTheBaseFolder)
{
    Connection::SetBaseFolder(m_dir.path());
    m_target->Execute(QStringLiteral("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [Mis datos/Año 2024/Modelo182.mdb]"
                                     ".[CartaDonantes] ORDER BY Nombre"));
    EXPECT_EQ(Column(*m_target, QStringLiteral("SELECT Nombre FROM CartaDonantes")),
              QStringList({QStringLiteral("Alba"), QStringLiteral("Ana"), QStringLiteral("Eva"), QStringLiteral("Luis"),
                           QStringLiteral("Rosa")}));
}

TEST_F(JetCrossDatabaseCopy, MissingSourceFileIsNamedAndNotCreated)
{
    const QString missing = Path(QStringLiteral("Mis datos/Otro.mdb"));
    const QString sql = QStringLiteral("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [") + missing
        + QStringLiteral(";pwd=zq417tev].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    const DatabaseError e = ExpectDatabaseError([&] { m_target->Execute(sql); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("No existe la base de datos «%1».").arg(missing)));
    EXPECT_EQ(U8(e.Statement()), U8(sql));
    EXPECT_FALSE(QFileInfo::exists(missing));
}

TEST_F(JetCrossDatabaseCopy, ExistingTargetTableIsAnErrorAndTheFileIsDetached)
{
    const QString sql = QStringLiteral("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [") + m_source
        + QStringLiteral(";pwd=zq417tev].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    m_target->Execute(sql);
    const DatabaseError e = ExpectDatabaseError([&] { m_target->Execute(sql); });
    EXPECT_EQ(U8(e.Message()), "table [CartaDonantes] already exists");
    EXPECT_EQ(U8(e.Statement()), U8(sql));
    EXPECT_EQ(Column(*m_target, QStringLiteral("SELECT name FROM pragma_database_list")), QStringList({QStringLiteral("main")}));
    EXPECT_EQ(Surnames().size(), 5);
}

TEST_F(JetCrossDatabaseCopy, MissingSourceTableIsReported)
{
    const QString sql = QStringLiteral("SELECT [Cartas].* INTO [Cartas] FROM [") + m_source + QStringLiteral("].[Cartas]");
    const DatabaseError e = ExpectDatabaseError([&] { m_target->Execute(sql); });
    EXPECT_EQ(U8(e.Message()), "no such table: m182_origen.Cartas");
    EXPECT_EQ(Column(*m_target, QStringLiteral("SELECT name FROM pragma_database_list")), QStringList({QStringLiteral("main")}));
}

TEST(JetCrossDatabaseCopyParse, ReadsTableFileAndOrder)
{
    const auto copy = JetDialect::ParseCrossDatabaseCopy(QStringLiteral(
        "SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [/a b/Modelo182.mdb;pwd=zq417tev].[CartaDonantes] "
        "ORDER BY Apellido1, Apellido2, Nombre"));
    ASSERT_TRUE(copy.has_value());
    EXPECT_EQ(U8(copy->targetTable), "CartaDonantes");
    EXPECT_EQ(U8(copy->sourceFile), "/a b/Modelo182.mdb");
    EXPECT_EQ(U8(copy->sourceTable), "CartaDonantes");
    EXPECT_EQ(U8(copy->orderBy), "Apellido1, Apellido2, Nombre");
    EXPECT_EQ(U8(JetDialect::CreateTableAsStatement(*copy, QStringLiteral("src"))),
              "CREATE TABLE [CartaDonantes] AS SELECT * FROM src.[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    EXPECT_EQ(U8(JetDialect::AttachStatement(QStringLiteral("/d'Souza/x.mdb"), QStringLiteral("src"))),
              "ATTACH DATABASE '/d''Souza/x.mdb' AS src");
}

TEST(JetCrossDatabaseCopyParse, OtherStatementsAreNotCopies)
{
    EXPECT_FALSE(JetDialect::ParseCrossDatabaseCopy(QStringLiteral("SELECT * FROM CartaDonantes")).has_value());
    EXPECT_FALSE(JetDialect::ParseCrossDatabaseCopy(QStringLiteral("INSERT INTO CartaDonantes VALUES ('a')")).has_value());
    EXPECT_FALSE(JetDialect::ParseCrossDatabaseCopy(
                     QStringLiteral("SELECT Nombre FROM Alumno WHERE Nombre='SELECT [T].* INTO [T] FROM [x].[T]'"))
                     .has_value());
}

TEST(JetBooleanLiterals, AreMinusOneAndZeroOutsideTextAndNames)
{
    using JetDialect::ReplaceBooleanLiterals;
    EXPECT_EQ(U8(ReplaceBooleanLiterals(QStringLiteral("UPDATE T SET a=True, b=false WHERE c=TRUE"))),
              "UPDATE T SET a=-1, b=0 WHERE c=-1");
    EXPECT_EQ(U8(ReplaceBooleanLiterals(QStringLiteral("SELECT 'True or False', [True], T.False FROM T WHERE Truely=1"))),
              "SELECT 'True or False', [True], T.False FROM T WHERE Truely=1");
    EXPECT_EQ(U8(ReplaceBooleanLiterals(QStringLiteral("INSERT INTO T VALUES ('d''True', True)"))),
              "INSERT INTO T VALUES ('d''True', -1)");
    const QString plain = QStringLiteral("SELECT Nombre FROM Alumno");
    EXPECT_EQ(U8(ReplaceBooleanLiterals(plain)), U8(plain));
}

} // namespace
