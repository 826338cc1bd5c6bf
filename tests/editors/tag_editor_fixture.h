// A playlist of three files with tags of their own, and a tag editor over it.
#pragma once

#include "editors/tag_editor.h"
#include "support/fake_audio_information.h"
#include "support/fake_user_prompts.h"

#include <gtest/gtest.h>

namespace kestrune {

class TagEditorFixture : public testing::Test {
protected:
    TagEditorFixture() {
        state.CurIndex = 2;
        Add("1.Old one", "/music/", "one.mp3", "First light");
        Add("2.Old two", "/music/", "two.mp3", "Harbour steps");
        Add("3.Old three", "/other/", "three.ogg", "Slow tide");
    }

    void Add(const char* text, const char* folder, const char* name, const char* title) {
        PlaylistRow row;
        row.fields[RowText] = QLatin1String(text);
        row.fields[SubFolder] = QLatin1String(folder);
        row.fields[SubFileName] = QLatin1String(name);
        const QString path = row.fields[SubFolder] + row.fields[SubFileName];
        rows.Append(row);
        FakeAudioInformation::Probe probe;
        probe.bitrateBps = 128000;
        probe.durationMs = 2000;
        probe.formatString = QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
        probe.title = QLatin1String(title);
        probe.artist = QStringLiteral("Tern");
        probe.fileSizeBytes = 32000;
        probe.formatTag = 85;
        information.files.insert(path, probe);
        FillTag(information.StoredTag(path, TagKind::Id3v1));
        information.StoredTag(path, TagKind::Id3v2).title = QLatin1String(title) + QStringLiteral(" (long)");
        information.calls.clear();
    }

    static void FillTag(TagFields& tag) {
        tag.album = QStringLiteral("Coast");
        tag.comment = QStringLiteral("By night");
        tag.copyright = QStringLiteral("2004 Tern");
        tag.genre = 17;
        tag.year = 2004;
        tag.url = QStringLiteral("http://tern.example/");
        tag.track = 7;
        tag.encodedBy = QStringLiteral("Me");
        tag.composer = QStringLiteral("A. Gull");
        tag.genreText = QStringLiteral("Shanty");
        tag.originalArtist = QStringLiteral("Auk");
    }

    TagFields& Stored(const char* path) { return information.StoredTag(QLatin1String(path), TagKind::Id3v1); }
    QString RowTextOf(int row) const { return rows.Field(row, RowText); }

    ProgramState state;
    PlaylistRows rows;
    FakeAudioInformation information;
    FakeUserPrompts prompts;
};

} // namespace kestrune
