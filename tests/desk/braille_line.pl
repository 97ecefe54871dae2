# braille_line.pl SOCKET LOG   The display behind brltty's driver "vr": 40 cells. Each line of LOG is what it shows from
# some moment on: the cell of the cursor, 0 for none, a tabulator, and the text without the blanks behind.
use strict;
use warnings;
use IO::Socket::UNIX;

my ($path, $log) = @ARGV;
my $server = IO::Socket::UNIX->new(Local => $path, Listen => 1) or die "$path: $!";
open my $out, '>', $log or die "$log: $!";
$out->autoflush(1);
my ($cursor, $text) = (0, '');
while (my $brltty = $server->accept) {
  $brltty->autoflush(1);
  print $brltty "Cells 40\n";
  while (my $line = <$brltty>) {
    my ($kind, $value) = $line =~ /^(Visual|Braille) "(.*)"/ or next;
    if ($kind eq 'Visual') {
      ($text = $value) =~ s/ +$//;
    } else {
      # The cursor is drawn with the two lowest dots, which the letters of our texts do not have.
      my @cells = split /\|/, $value;
      ($cursor) = ((grep { $cells[$_ - 1] =~ /78$/ } 1 .. @cells), 0);
    }
    print $out "$cursor\t$text\n";
  }
}
