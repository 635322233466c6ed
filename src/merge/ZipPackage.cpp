#include "merge/ZipPackage.h"

#include "merge/MergeError.h"

#include <zip.h>

#include <memory>

namespace {

QString NotAPackage(const QString &displayName)
{
    return ZipPackage::NotADocumentMessage(displayName);
}

QString ErrorText(zip_error_t *error)
{
    return QString::fromUtf8(zip_error_strerror(error));
}

struct ArchiveCloser
{
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveCloser>;

QByteArray ReadEntry(zip_t *archive, zip_uint64_t index, zip_uint64_t size, const QString &displayName)
{
    zip_file_t *file = zip_fopen_index(archive, index, 0);
    if (!file)
        throw MergeError(NotAPackage(displayName));
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    const zip_int64_t read = size ? zip_fread(file, bytes.data(), size) : 0;
    zip_fclose(file);
    if (read < 0 || zip_uint64_t(read) != size)
        throw MergeError(NotAPackage(displayName));
    return bytes;
}

} // namespace

ZipPackage ZipPackage::FromBytes(const QByteArray &bytes, const QString &displayName)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *source = zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &error);
    if (!source) {
        zip_error_fini(&error);
        throw MergeError(NotAPackage(displayName));
    }
    Archive archive(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
    if (!archive) {
        zip_source_free(source);
        zip_error_fini(&error);
        throw MergeError(NotAPackage(displayName));
    }
    zip_error_fini(&error);

    ZipPackage package;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_stat_index(archive.get(), zip_uint64_t(i), 0, &stat) != 0)
            throw MergeError(NotAPackage(displayName));
        const QString name = QString::fromUtf8(stat.name);
        if (name.endsWith(QLatin1Char('/')))
            continue; // folders are implied by the part names
        package.m_entries.append({name, ReadEntry(archive.get(), zip_uint64_t(i), stat.size, displayName)});
    }
    return package;
}

QString ZipPackage::NotADocumentMessage(const QString &displayName)
{
    return QStringLiteral("La plantilla «") + displayName
           + QStringLiteral("» no es un documento de Word válido o está dañada. "
                            "Sustitúyala por la plantilla original y vuelva a intentarlo.");
}

bool ZipPackage::Contains(const QString &name) const
{
    for (const Entry &entry : m_entries)
        if (entry.name == name)
            return true;
    return false;
}

QByteArray ZipPackage::Part(const QString &name) const
{
    for (const Entry &entry : m_entries)
        if (entry.name == name)
            return entry.bytes;
    return QByteArray();
}

void ZipPackage::SetPart(const QString &name, const QByteArray &bytes)
{
    for (Entry &entry : m_entries) {
        if (entry.name == name) {
            entry.bytes = bytes;
            return;
        }
    }
    m_entries.append({name, bytes});
}

QStringList ZipPackage::PartNames() const
{
    QStringList names;
    for (const Entry &entry : m_entries)
        names << entry.name;
    return names;
}

QByteArray ZipPackage::ToBytes() const
{
    const auto fail = [](const QString &reason) {
        return MergeError(QStringLiteral("No se pudo componer el documento de los certificados (") + reason
                          + QStringLiteral(")."));
    };
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    if (!buffer) {
        const QString reason = ErrorText(&error);
        zip_error_fini(&error);
        throw fail(reason);
    }
    zip_source_keep(buffer); // the archive's bytes are read from it after zip_close
    zip_t *archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
    if (!archive) {
        const QString reason = ErrorText(&error);
        zip_error_fini(&error);
        zip_source_free(buffer);
        throw fail(reason);
    }
    zip_error_fini(&error);

    // The parts' bytes stay alive in m_entries until zip_close has read them.
    QList<QByteArray> names;
    for (const Entry &entry : m_entries) {
        names << entry.name.toUtf8();
        zip_source_t *part = zip_source_buffer(archive, entry.bytes.constData(), zip_uint64_t(entry.bytes.size()), 0);
        const zip_int64_t index = part ? zip_file_add(archive, names.last().constData(), part, ZIP_FL_ENC_UTF_8) : -1;
        if (index < 0) {
            if (part)
                zip_source_free(part);
            const QString reason = QString::fromUtf8(zip_strerror(archive));
            zip_discard(archive);
            zip_source_free(buffer);
            throw fail(reason);
        }
        zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, 0);
    }
    if (zip_close(archive) != 0) {
        const QString reason = QString::fromUtf8(zip_strerror(archive));
        zip_discard(archive);
        zip_source_free(buffer);
        throw fail(reason);
    }

    QByteArray bytes;
    if (zip_source_open(buffer) == 0) {
        zip_source_seek(buffer, 0, SEEK_END);
        const zip_int64_t size = zip_source_tell(buffer);
        zip_source_seek(buffer, 0, SEEK_SET);
        if (size > 0) {
            bytes.resize(qsizetype(size));
            if (zip_source_read(buffer, bytes.data(), zip_uint64_t(size)) != size)
                bytes.clear();
        }
        zip_source_close(buffer);
    }
    zip_source_free(buffer);
    if (bytes.isEmpty())
        throw fail(QStringLiteral("el archivo comprimido quedó vacío"));
    return bytes;
}
