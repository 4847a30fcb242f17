// A lock on a data file held by another process: the test binary runs itself again with
// "--hold-lock PATH read|write" and the copy holds the lock until its input closes.
#pragma once

#include "foundation/DbEngine.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <cstdio>
#include <cstring>

class LockElsewhere {
public:
    enum Kind { Read, Write };
    LockElsewhere(const QString& path, Kind kind) {
        mProcess.start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--hold-lock"), path,
                        kind == Read ? QStringLiteral("read") : QStringLiteral("write")});
        mHolding = mProcess.waitForStarted(10000) && mProcess.waitForReadyRead(10000) &&
                   mProcess.readLine().trimmed() == "locked";
    }
    ~LockElsewhere() { Release(); }
    bool Holding() const { return mHolding; }
    void Release() {
        if (mProcess.state() == QProcess::NotRunning)
            return;
        mProcess.closeWriteChannel();
        if (!mProcess.waitForFinished(10000))
            mProcess.kill();
        mHolding = false;
    }

    // In the copy: takes the lock, says so, and waits for the end of its input.
    static int RunIfAsked(int argc, char** argv) {
        if (argc < 4 || std::strcmp(argv[1], "--hold-lock") != 0)
            return -1;
        try {
            Database db = DBEngine::OpenDatabase(QFile::decodeName(argv[2]));
            if (std::strcmp(argv[3], "write") == 0) {
                db.Execute(QStringLiteral("BEGIN EXCLUSIVE"));
            } else {
                db.Execute(QStringLiteral("BEGIN"));
                db.OpenRecordset(QStringLiteral("SELECT count(*) FROM sqlite_master"));
            }
            std::printf("locked\n");
            std::fflush(stdout);
            while (std::getchar() != EOF) {
            }
        } catch (const DbError& e) {
            std::printf("failed %s\n", qPrintable(e.Description()));
            return 1;
        }
        return 0;
    }

private:
    QProcess mProcess;
    bool mHolding = false;
};

// main() of a suite whose tests hold locks through copies of the suite itself.
#define QS_MAIN_WITH_LOCK_HOLDER(TestClass)                                                        \
    int main(int argc, char** argv) {                                                              \
        const int held = LockElsewhere::RunIfAsked(argc, argv);                                    \
        if (held >= 0)                                                                             \
            return held;                                                                           \
        QCoreApplication app(argc, argv);                                                          \
        TestClass t;                                                                               \
        return QTest::qExec(&t, argc, argv);                                                       \
    }
