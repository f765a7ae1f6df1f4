#include <sys/stat.h>

#include <stdexcept>

#include "store/postgres/postgresstore.h"
#include "store/schema.h"
#include "support/postgresserver.h"
#include "support/site.h"

namespace orvenmod::test {

namespace {

// Another build's schema may differ, and the server is shared by all that run on this machine.
std::string keyOfThisProgram() {
    struct stat program {};
    if (::stat("/proc/self/exe", &program) != 0) throw std::runtime_error("this program's own file can't be found");
    return "suite_" + std::to_string(program.st_ino) + "_" + std::to_string(program.st_mtim.tv_sec) + "_" +
           std::to_string(program.st_mtim.tv_nsec);
}

void fill(const std::string& database) {
    const auto connection = stores().connect(connectionStringFor(PostgresServer::shared(), database));
    store::createSchema(*connection);
    connection->close();
    // A session left would keep it from being copied.
    store::postgres::PostgresStore::dropIdleSessions();
}

// The rows of each table, then what isn't seen in rows.
constexpr const char* kDump = R"(
select (select string_agg(relname || table_to_xml(oid, true, false, '')::text, '' order by relname)
        from pg_class where relnamespace = 'public'::regnamespace and relkind = 'r')
    || (select string_agg(t.relname || '.' || a.attname || ' ' || format_type(a.atttypid, a.atttypmod) || ' '
                              || a.attnotnull::text || a.attidentity::text || ' ' || coalesce(d.description, ''),
                          chr(10) order by t.relname, a.attnum)
        from pg_class t join pg_attribute a on a.attrelid = t.oid and a.attnum > 0 and not a.attisdropped
        left join pg_description d on d.objoid = t.oid and d.objsubid = a.attnum
        where t.relnamespace = 'public'::regnamespace and t.relkind in ('r', 'v'))
    || (select string_agg(indexdef, chr(10) order by indexname) from pg_indexes where schemaname = 'public')
    || (select string_agg(t.relname || ' ' || d.description, chr(10) order by t.relname)
        from pg_class t join pg_description d on d.objoid = t.oid and d.objsubid = 0
        where t.relnamespace = 'public'::regnamespace))";

class PostgresSite : public Site {
public:
    PostgresSite() : name_(PostgresServer::shared().makeDatabaseLike(keyOfThisProgram(), fill)) {}
    ~PostgresSite() override {
        store::postgres::PostgresStore::dropIdleSessions();
        PostgresServer::shared().dropDatabase(name_);
    }
    PostgresSite(const PostgresSite&) = delete;
    PostgresSite& operator=(const PostgresSite&) = delete;

    std::string connectionString() const override { return connectionStringFor(PostgresServer::shared(), name_); }
    std::string dump() const override { return PostgresServer::shared().run(name_, kDump); }

private:
    std::string name_;
};

}  // namespace

std::unique_ptr<Site> newPostgresSite() { return std::make_unique<PostgresSite>(); }

}  // namespace orvenmod::test
